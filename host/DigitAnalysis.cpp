#include "host/DigitAnalysis.h"

#include "host/internal/BoundedCache.h"
#include "host/internal/LogFormat.h"
#include "platform/Logging.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <optional>
#include <phonenumbers/phonenumberutil.h>
#include <phonenumbers/shortnumberinfo.h>
#include <set>
#include <string_view>

namespace Host
{
namespace
{
using i18n::phonenumbers::PhoneNumber;
using i18n::phonenumbers::PhoneNumberUtil;
using i18n::phonenumbers::ShortNumberInfo;

constexpr const char* DIGIT_ANALYSIS_LOG_FILE = "./host/DigitAnalysis";
constexpr std::size_t LONGEST_DIAL_STRING = 64;
constexpr std::size_t CACHE_CAPACITY = 20'000;
constexpr std::string_view SEPARATORS = " \t-/.()";
constexpr const char* UNKNOWN_REGION = "ZZ";

std::string inUpperCase(std::string text)
{
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char letter) { return static_cast<char>(std::toupper(letter)); });
    return text;
}

bool isDigit(char character)
{
    return character >= '0' && character <= '9';
}

bool startsWith(std::string_view text, std::string_view start)
{
    return text.substr(0, start.size()) == start;
}

/** A text that is written like a telephone number. */
struct DialString
{
    bool plus = false;
    std::string digits;
    std::size_t firstGroup = 0; ///< digits before the first separator between digits, 0 when there is none

    std::string text() const { return (plus ? "+" : "") + digits; }
};

/** "192.168.1.5" is written like a number, yet is the address of a machine. */
bool isMachineAddress(std::string_view text)
{
    std::size_t groups = 0;
    const char* at = text.data();
    const char* const end = at + text.size();
    while (at != end)
    {
        unsigned value = 0;
        const auto [stop, error] = std::from_chars(at, end, value);
        const bool leadingZero = *at == '0' && stop - at > 1;
        if (error != std::errc() || value > 255 || leadingZero || (stop != end && *stop != '.'))
        {
            return false;
        }
        ++groups;
        at = stop == end ? end : stop + 1;
    }
    return groups == 4 && text.back() != '.';
}

std::optional<DialString> parseDialString(const std::string& text)
{
    DialString dial;
    if (text.size() > LONGEST_DIAL_STRING || isMachineAddress(text))
    {
        return std::nullopt;
    }
    std::size_t gapAfter = 0;
    for (const char character : text)
    {
        if (isDigit(character))
        {
            dial.firstGroup = dial.firstGroup == 0 ? gapAfter : dial.firstGroup;
            dial.digits += character;
        }
        else if (character == '+' && !dial.plus && dial.digits.empty())
        {
            dial.plus = true;
        }
        else if (SEPARATORS.find(character) == std::string_view::npos)
        {
            return std::nullopt;
        }
        else
        {
            gapAfter = gapAfter == 0 ? dial.digits.size() : gapAfter;
        }
    }
    return dial.digits.empty() ? std::nullopt : std::make_optional(dial);
}

/** What one way to read a text gives. */
struct Reading
{
    std::string e164;
    bool valid = false;
    bool international = false;
    bool possible = false;
};

bool isAllDigits(const std::string& text)
{
    return std::all_of(text.begin(), text.end(), isDigit);
}
} // namespace

class DigitAnalysis::Impl
{
  public:
    explicit Impl(const DigitAnalysisSettings& settings);

    /** The comparable form, or the text itself when there is none. */
    std::string convert(const std::string& text);

  private:
    void setRegion(const std::string& region);
    std::string resolve(const DialString& dial) const;
    Reading read(const std::string& text) const;
    Reading readOutside(const DialString& dial) const;
    Reading readSubscriber(const std::string& digits) const;
    bool isWholeNumber(const PhoneNumber& number, const std::string& text, const std::string& e164) const;

    const PhoneNumberUtil& util_ = *PhoneNumberUtil::GetInstance();
    const ShortNumberInfo shortNumbers_;
    std::string region_ = UNKNOWN_REGION;
    std::string trunkPrefix_;
    bool trunkPrefixNeeded_ = false;
    std::string areaCode_;
    std::string outsideLinePrefix_;
    const std::size_t longestExtension_;
    BoundedCache cache_{CACHE_CAPACITY};
};

DigitAnalysis::Impl::Impl(const DigitAnalysisSettings& settings)
    : areaCode_(settings.areaCode), outsideLinePrefix_(settings.outsideLinePrefix),
      longestExtension_(settings.longestExtension)
{
    setRegion(settings.region);
    if (!isAllDigits(outsideLinePrefix_))
    {
        logAppOrv("Host", DIGIT_ANALYSIS_LOG_FILE, 2, __LINE__, "The outside-line prefix '%s' is no number",
                  outsideLinePrefix_.c_str());
        outsideLinePrefix_.clear();
    }
    if (!isAllDigits(areaCode_))
    {
        logAppOrv("Host", DIGIT_ANALYSIS_LOG_FILE, 2, __LINE__, "The area code '%s' is no number", areaCode_.c_str());
        areaCode_.clear();
    }
    if (!trunkPrefix_.empty() && startsWith(areaCode_, trunkPrefix_))
    {
        areaCode_.erase(0, trunkPrefix_.size());
    }
}

void DigitAnalysis::Impl::setRegion(const std::string& region)
{
    if (!knowsRegion(region))
    {
        logInFull(DIGIT_ANALYSIS_LOG_FILE, 2, __LINE__,
                  "No telephone region '" + region + "'; national numbers stay as they are");
        return;
    }
    region_ = inUpperCase(region);
    util_.GetNddPrefixForRegion(region_, true, &trunkPrefix_);
    // Where the trunk prefix is the country code itself ("1 212 ..."), numbers are dialled with or without it.
    trunkPrefixNeeded_ =
        !trunkPrefix_.empty() && trunkPrefix_ != std::to_string(util_.GetCountryCodeForRegion(region_));
}

std::string DigitAnalysis::Impl::convert(const std::string& text)
{
    const std::optional<DialString> dial = parseDialString(text);
    if (!dial || (!dial->plus && dial->digits.size() <= longestExtension_))
    {
        return text;
    }
    if (const std::string* known = cache_.find(text))
    {
        return *known;
    }
    const std::string number = resolve(*dial);
    return cache_.insert(text, number.empty() ? text : number);
}

std::string DigitAnalysis::Impl::resolve(const DialString& dial) const
{
    const Reading direct = read(dial.text());
    const Reading outside = readOutside(dial);
    const bool prefixStandsApart = dial.firstGroup == outsideLinePrefix_.size();
    if (outside.valid && (prefixStandsApart || !direct.valid))
    {
        return outside.e164;
    }
    // A country's newest numbers may be unknown here; written in full they are still comparable.
    return direct.valid || (direct.international && direct.possible) ? direct.e164 : std::string();
}

Reading DigitAnalysis::Impl::readOutside(const DialString& dial) const
{
    if (dial.plus || outsideLinePrefix_.empty() || !startsWith(dial.digits, outsideLinePrefix_))
    {
        return {};
    }
    return read(dial.digits.substr(outsideLinePrefix_.size()));
}

Reading DigitAnalysis::Impl::read(const std::string& text) const
{
    PhoneNumber number;
    if (util_.ParseAndKeepRawInput(text, region_, &number) != PhoneNumberUtil::NO_PARSING_ERROR)
    {
        return {};
    }
    Reading reading;
    util_.Format(number, PhoneNumberUtil::E164, &reading.e164);
    if (!isWholeNumber(number, text, reading.e164))
    {
        return readSubscriber(text);
    }
    reading.valid = util_.IsValidNumber(number);
    reading.possible = util_.IsPossibleNumber(number);
    reading.international = number.country_code_source() == PhoneNumber::FROM_NUMBER_WITH_PLUS_SIGN ||
                            number.country_code_source() == PhoneNumber::FROM_NUMBER_WITH_IDD;
    return reading;
}

/** Whether the text names its area itself; libphonenumber takes numbers without trunk prefix for such, too. */
bool DigitAnalysis::Impl::isWholeNumber(const PhoneNumber& number, const std::string& text,
                                        const std::string& e164) const
{
    switch (number.country_code_source())
    {
    case PhoneNumber::FROM_NUMBER_WITH_PLUS_SIGN:
    case PhoneNumber::FROM_NUMBER_WITH_IDD:
        return true;
    case PhoneNumber::FROM_NUMBER_WITHOUT_PLUS_SIGN:
        return !trunkPrefixNeeded_ && startsWith(text, trunkPrefix_) && e164 == "+" + text;
    default:
        return !trunkPrefixNeeded_ || startsWith(text, trunkPrefix_);
    }
}

Reading DigitAnalysis::Impl::readSubscriber(const std::string& digits) const
{
    PhoneNumber number;
    if (areaCode_.empty() || digits.size() <= longestExtension_ ||
        util_.Parse(digits, region_, &number) != PhoneNumberUtil::NO_PARSING_ERROR ||
        shortNumbers_.IsValidShortNumberForRegion(number, region_) || // 116 117 is the same in every area
        util_.Parse(trunkPrefix_ + areaCode_ + digits, region_, &number) != PhoneNumberUtil::NO_PARSING_ERROR)
    {
        return {};
    }
    Reading reading;
    reading.valid = util_.IsValidNumber(number);
    util_.Format(number, PhoneNumberUtil::E164, &reading.e164);
    return reading;
}

DigitAnalysis::DigitAnalysis(const DigitAnalysisSettings& settings) : impl_(std::make_unique<Impl>(settings)) {}

DigitAnalysis::~DigitAnalysis() = default;

bool DigitAnalysis::knowsRegion(const std::string& region)
{
    std::set<std::string> known;
    PhoneNumberUtil::GetInstance()->GetSupportedRegions(&known);
    return known.count(inUpperCase(region)) != 0;
}

void DigitAnalysis::convertDialString(std::string& number)
{
    number = impl_->convert(number);
}

void DigitAnalysis::analyseNumber(const std::string& number)
{
    impl_->convert(number);
}
} // namespace Host
