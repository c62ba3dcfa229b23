#include "search/TextFolding.h"

#include "Log.h"

#include <unicode/translit.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>
#include <unicode/utf8.h>

namespace ConversationAPI
{
namespace
{
constexpr const char* TEXT_FOLDING_LOG_FILE = "./src/TextFolding";
constexpr std::size_t LONGEST_FOLDED_TEXT = 1'000;
constexpr std::size_t MOST_REMEMBERED = 10'000;

// Marks of scripts in which they are letters, as in Hindi or Thai, stay.
constexpr const char* WITHOUT_ACCENTS = "NFKD; [[:Mn:]&[:Script=Inherited:]] Remove; Latin-ASCII";
constexpr const char* IN_LATIN_LETTERS = "Any-Latin; NFKD; [:Mn:] Remove; Latin-ASCII; Lower";

/** Null when ICU lacks the rules. */
std::unique_ptr<icu::Transliterator> transliterator(const char* id)
{
    UErrorCode status = U_ZERO_ERROR;
    std::unique_ptr<icu::Transliterator> made(icu::Transliterator::createInstance(id, UTRANS_FORWARD, status));
    if (U_FAILURE(status))
    {
        CONVERSATION_LOG(TEXT_FOLDING_LOG_FILE, 2, "TextFolding: no rules for '%s': %s", id, u_errorName(status));
        made.reset();
    }
    return made;
}

void apply(const std::unique_ptr<icu::Transliterator>& rules, icu::UnicodeString& text)
{
    if (rules)
    {
        rules->transliterate(text);
    }
}

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wconversion" // inside ICU's macro
/** The code point at the place, which moves behind it; negative for what is no UTF-8. */
UChar32 nextCodePoint(std::string_view text, std::size_t& at)
{
    UChar32 codePoint = 0;
    U8_NEXT(text.data(), at, text.size(), codePoint);
    return codePoint;
}
#pragma GCC diagnostic pop

bool isWordCharacter(UChar32 character)
{
    return u_isalnum(character) || (U_GET_GC_MASK(character) & U_GC_M_MASK) != 0;
}

/** What stands inside words without dividing them. */
bool isJoiner(UChar32 character)
{
    constexpr UChar32 TYPOGRAPHIC_APOSTROPHE = 0x2019;
    constexpr UChar32 MODIFIER_APOSTROPHE = 0x02BC;
    return character == '\'' || character == TYPOGRAPHIC_APOSTROPHE || character == MODIFIER_APOSTROPHE ||
           u_charType(character) == U_FORMAT_CHAR;
}

std::string wordCharactersOf(const icu::UnicodeString& text)
{
    icu::UnicodeString kept;
    for (int32_t at = 0; at < text.length(); at = text.moveIndex32(at, 1))
    {
        const UChar32 character = text.char32At(at);
        if (isWordCharacter(character))
        {
            const int32_t digit = u_charDigitValue(character);
            kept.append(digit < 0 ? character : static_cast<UChar32>('0' + digit));
        }
    }
    std::string utf8;
    return kept.toUTF8String(utf8);
}

/** On the keys of a telephone; what has no key is left out. */
std::string onKeypad(const std::string& letters)
{
    constexpr std::string_view KEYS = "22233344455566677778889999";
    std::string keys;
    for (const char letter : letters)
    {
        if (letter >= 'a' && letter <= 'z')
        {
            keys += KEYS[static_cast<std::size_t>(letter - 'a')];
        }
        else if (letter >= '0' && letter <= '9')
        {
            keys += letter;
        }
    }
    return keys;
}

struct TextSink
{
    void append(std::string_view spelling, TextRange) { text += spelling; }
    void extend(std::size_t) {}

    std::string text;
};

struct SourcesSink
{
    void append(std::string_view spelling, TextRange source)
    {
        folded.text += spelling;
        folded.sources.resize(folded.text.size(), source);
    }
    void extend(std::size_t end)
    {
        if (!folded.sources.empty())
        {
            folded.sources.back().end = end;
        }
    }

    FoldedText folded;
};
} // namespace

/** The rules of Unicode. */
class TextFolding::Icu
{
  public:
    Character fold(UChar32 codePoint) const
    {
        Character folded;
        if (codePoint < 0)
        {
            return folded;
        }
        icu::UnicodeString text(codePoint);
        apply(withoutAccents_, text);
        text.foldCase();
        const std::string letters = wordCharactersOf(text);
        if (!letters.empty())
        {
            apply(inLatinLetters_, text);
            folded.role = Character::SPELLED;
            folded.spellings = {letters, onKeypad(wordCharactersOf(text))};
        }
        else if (isJoiner(codePoint) || isWordCharacter(codePoint))
        {
            folded.role = Character::MARK;
        }
        return folded;
    }

  private:
    const std::unique_ptr<icu::Transliterator> withoutAccents_ = transliterator(WITHOUT_ACCENTS);
    const std::unique_ptr<icu::Transliterator> inLatinLetters_ = transliterator(IN_LATIN_LETTERS);
};

TextFolding::TextFolding() : icu_(std::make_unique<Icu>())
{
    for (std::size_t codePoint = 0; codePoint < ascii_.size(); ++codePoint)
    {
        ascii_[codePoint] = icu_->fold(static_cast<UChar32>(codePoint));
    }
}

TextFolding::~TextFolding() = default;

const TextFolding::Character& TextFolding::character(int codePoint)
{
    if (codePoint >= 0 && static_cast<std::size_t>(codePoint) < ascii_.size())
    {
        return ascii_[static_cast<std::size_t>(codePoint)];
    }
    const auto known = others_.find(codePoint);
    if (known != others_.end())
    {
        return known->second;
    }
    if (others_.size() == MOST_REMEMBERED)
    {
        others_.clear();
    }
    return others_.emplace(codePoint, icu_->fold(codePoint)).first->second;
}

template <typename Sink>
void TextFolding::foldInto(Sink& sink, std::string_view text, Alphabet alphabet)
{
    text = text.substr(0, LONGEST_FOLDED_TEXT);
    bool isInWord = false;
    for (std::size_t at = 0; at < text.size();)
    {
        const std::size_t begin = at;
        const UChar32 codePoint = nextCodePoint(text, at);
        const Character& folded = character(codePoint);
        if (folded.role == Character::SPELLED)
        {
            sink.append(isInWord ? "" : " ", {begin, begin});
            sink.append(folded.spellings[static_cast<std::size_t>(alphabet)], {begin, at});
            isInWord = true;
        }
        else if (folded.role == Character::MARK && isInWord)
        {
            sink.extend(at);
        }
        else
        {
            isInWord = false;
        }
    }
}

std::string TextFolding::fold(std::string_view text, Alphabet alphabet)
{
    TextSink sink;
    foldInto(sink, text, alphabet);
    return std::move(sink.text);
}

FoldedText TextFolding::foldWithSources(std::string_view text, Alphabet alphabet)
{
    SourcesSink sink;
    foldInto(sink, text, alphabet);
    return std::move(sink.folded);
}
} // namespace ConversationAPI
