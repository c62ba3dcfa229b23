#include "host/LogPseudonyms.h"

#include <algorithm>
#include <cstdlib>
#include <sodium.h>
#include <unordered_set>

namespace Host
{
namespace
{
constexpr std::size_t HASH_SIZE = crypto_generichash_BYTES_MIN;
constexpr std::size_t SHOWN_BYTES = 4;
constexpr std::size_t FEWEST_HIDDEN_DIGITS = 3;
constexpr std::size_t LONGEST_GAP = 3;
constexpr std::size_t CONVERSATION_ID_SIZE = 36;
constexpr std::size_t SHORT_ID_SIZE = 7;
constexpr std::string_view DATE_TIME = "0000-00-00T00:00:00";
constexpr std::string_view ZONE_OFFSET = "+00:00";

/** Words that the program itself puts into texts. None may be a likely name of somebody. */
const std::unordered_set<std::string_view>& vocabulary()
{
    static const std::unordered_set<std::string_view> words{
        // states and reasons
        "CONNECTED", "LOCAL", "REMOTE", "ON", "HOLD", "CONFERENCE", "INCOMING", "OUTGOING", "CALL", "CLEARING", "GROUP",
        "PICKUP", "GROUPPICKUP", "CALLED", "ISOLATED", "WAITING", "IGNORED", "REPRESENT", "HELD", "INFO", "UPDATE",
        "BLINDTRANSFERRING", "UNKOWN", "UNKNOWN", "UPDATED", "ADDED", "DELETED", "DUMMY",
        // descriptions of conversations and participants
        "clone", "last", "comp", "w1", "w2", "no", "participants", "tempId", "PhantomConversation", "ConversationList",
        "Caller", "Unknown", "XXX", "true", "false", "null",
        // the PhoneBook message
        "xml", "version", "encoding", "utf", "Schema", "name", "PhoneBook", "ReasonForMessage", "write", "read",
        "request", "Entry", "Surname", "Firstname", "Office", "Office2", "Mobile", "Private", "Email", "Group",
        "DefaultNumber", "Company", "Address", "Address2", "JobFunction", "VoiceDial", "Picture", "UniqueID",
        "ContactSource", "ExternalID", "amp", "lt", "gt", "quot", "apos",
        // files and kinds of call-log entries
        "tmp", "file", "png", "jpg", "DirSvc", "WSISvc", "EWS", "Placed", "Missed", "Received",
        // texts of Boost's and the C library's errors
        "Year", "Month", "is", "out", "of", "valid", "value", "range", "bad", "lexical", "cast", "source", "type",
        "could", "not", "be", "interpreted", "as", "target", "such", "or", "directory", "denied", "damaged", "month",
        "year", "Day", "day", "number", "for"};
    return words;
}

bool isDigit(char character)
{
    return character >= '0' && character <= '9';
}

/** Every byte of a character outside ASCII counts as a letter. */
bool isLetter(char character)
{
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') ||
           (static_cast<unsigned char>(character) & 0x80U) != 0;
}

bool isNumberSeparator(char character)
{
    return std::string_view(" -/.()").find(character) != std::string_view::npos;
}

bool hasShape(std::string_view text, std::string_view shape)
{
    return text.size() >= shape.size() &&
           std::equal(shape.begin(), shape.end(), text.begin(),
                      [](char expected, char found) { return expected == '0' ? isDigit(found) : expected == found; });
}

/** The length of the ISO 8601 date-time at the start of a text, 0 when there is none. */
std::size_t dateTimeLength(std::string_view text)
{
    if (!hasShape(text, DATE_TIME))
    {
        return 0;
    }
    const std::string_view rest = text.substr(DATE_TIME.size());
    const bool hasOffset =
        !rest.empty() && (rest[0] == '+' || rest[0] == '-') && hasShape(rest.substr(1), ZONE_OFFSET.substr(1));
    const std::size_t length = DATE_TIME.size() + (hasOffset ? ZONE_OFFSET.size() : 0);
    return length < text.size() && isDigit(text[length]) ? 0 : length;
}
} // namespace

/** One walk through a text from left to right. */
class LogPseudonyms::Scanner
{
  public:
    Scanner(const LogPseudonyms& pseudonyms, std::string_view text) : pseudonyms_(pseudonyms), text_(text) {}

    std::string run();

  private:
    void takeWord(std::size_t end);
    void takeNumber();
    void take(std::size_t length);
    std::size_t wordEnd() const;

    const LogPseudonyms& pseudonyms_;
    const std::string_view text_;
    std::size_t at_ = 0;
    std::string hidden_;
};

std::string LogPseudonyms::Scanner::run()
{
    while (at_ < text_.size())
    {
        const std::size_t end = wordEnd();
        const bool onlyDigits = std::all_of(text_.begin() + static_cast<std::ptrdiff_t>(at_),
                                            text_.begin() + static_cast<std::ptrdiff_t>(end), isDigit);
        if (end == at_)
        {
            take(1);
        }
        else if (const std::size_t dateTime = dateTimeLength(text_.substr(at_)))
        {
            take(dateTime);
        }
        else if (onlyDigits)
        {
            takeNumber();
        }
        else
        {
            takeWord(end);
        }
    }
    return std::move(hidden_);
}

void LogPseudonyms::Scanner::take(std::size_t length)
{
    hidden_.append(text_.substr(at_, length));
    at_ += length;
}

/** The end of the letters and digits that stand here; an apostrophe between two letters belongs to them. */
std::size_t LogPseudonyms::Scanner::wordEnd() const
{
    std::size_t end = at_;
    while (end < text_.size())
    {
        const bool apostrophe = text_[end] == '\'' && end > at_ && isLetter(text_[end - 1]) && end + 1 < text_.size() &&
                                isLetter(text_[end + 1]);
        if (!isLetter(text_[end]) && !isDigit(text_[end]) && !apostrophe)
        {
            break;
        }
        ++end;
    }
    return end;
}

void LogPseudonyms::Scanner::takeWord(std::size_t end)
{
    const std::string_view word = text_.substr(at_, end - at_);
    if (word.size() == 1 || vocabulary().count(word) != 0)
    {
        take(word.size());
        return;
    }
    const bool hasDigit = std::any_of(word.begin(), word.end(), isDigit);
    const bool isConversationId = hasDigit && word.size() == CONVERSATION_ID_SIZE;
    hidden_ += pseudonyms_.pseudonym(hasDigit ? "id-" : "name-",
                                     isConversationId ? word.substr(word.size() - SHORT_ID_SIZE) : word);
    at_ = end;
}

/** Takes the digits that stand here and the groups of digits that follow them as parts of one number. */
void LogPseudonyms::Scanner::takeNumber()
{
    std::string digits;
    std::size_t end = at_;
    std::size_t next = at_;
    while (next < text_.size() && next - end <= LONGEST_GAP && (isDigit(text_[next]) || isNumberSeparator(text_[next])))
    {
        if (isDigit(text_[next]))
        {
            digits += text_[next];
            end = next + 1;
        }
        ++next;
    }
    if (digits.size() < FEWEST_HIDDEN_DIGITS)
    {
        take(end - at_);
        return;
    }
    hidden_ += pseudonyms_.pseudonym("num-", digits);
    at_ = end;
}

LogPseudonyms::LogPseudonyms() : key_{}
{
    if (sodium_init() < 0)
    {
        std::abort(); // without random numbers every pseudonym could be undone
    }
    randombytes_buf(key_.data(), key_.size());
}

LogPseudonyms::LogPseudonyms(std::string_view key) : key_{}
{
    crypto_generichash(key_.data(), key_.size(), reinterpret_cast<const unsigned char*>(key.data()), key.size(),
                       nullptr, 0);
}

std::string LogPseudonyms::hide(std::string_view text) const
{
    return Scanner(*this, text).run();
}

std::string LogPseudonyms::pseudonym(const char* kind, std::string_view text) const
{
    std::array<unsigned char, HASH_SIZE> hash{};
    crypto_generichash(hash.data(), hash.size(), reinterpret_cast<const unsigned char*>(text.data()), text.size(),
                       key_.data(), key_.size());
    std::array<char, 2 * SHOWN_BYTES + 1> shown{};
    sodium_bin2hex(shown.data(), shown.size(), hash.data(), SHOWN_BYTES);
    return kind + std::string(shown.data());
}
} // namespace Host
