/**
 * Brings telephone numbers to one comparable form, E.164 ("+49301234567"), on libphonenumber.
 *
 * With region DE and outside-line prefix 0, "+49 30 1234567", "0049301234567", "030 1234567", "00301234567" (prefix
 * and national number) and "00049301234567" (prefix and international number) are one number. Unchanged stay texts
 * that hold anything but digits, one '+' before them, blanks and "-/.()": service codes ("*21#"), names, SIP user
 * parts, addresses; further internal extensions, and numbers that are neither valid nor fully international. Two
 * numbers are never taken for one because they end alike. Converting a converted text changes nothing.
 *
 * One text can be readable in two ways, since "00" is both the international prefix and an outside-line prefix
 * before a trunk prefix. The reading that gives a number valid in its country wins: "00301234567" is Berlin, because
 * no Greek number is that short. When both are valid, the prefix counts as dialled when it stands apart
 * ("0 0431 234567" is Kiel), and otherwise the text is international ("00431234567" is Vienna, not Kiel): this is
 * how numbers are stored and signalled, and calls from a line with a prefix carry it before all of them.
 */
#pragma once

#include "platform/DigitAnalysisServiceIfc.h"

#include <cstddef>
#include <memory>
#include <string>

namespace Host
{
struct DigitAnalysisSettings
{
    /** Where the telephone stands, ISO 3166 ("DE"). Elsewhere unknown: only numbers with '+' are converted. */
    std::string region = "DE";

    /** What is dialled for an outside line, digits; empty when nothing is. */
    std::string outsideLinePrefix = "0";

    /** Numbers of at most so many digits are internal and stay as they are. */
    std::size_t longestExtension = 5;

    /** The telephone's area code, with or without trunk prefix ("030"), for numbers dialled without one; empty:
     *  such numbers stay as they are. */
    std::string areaCode;
};

/** Bad settings are logged and count as empty. Used on the UI thread only. */
class DigitAnalysis final : public DigitAnalysisServiceIfc
{
  public:
    explicit DigitAnalysis(const DigitAnalysisSettings& settings = {});
    ~DigitAnalysis() override;

    /** Whether the numbers of a region, ISO 3166 in either case, are known. */
    static bool knowsRegion(const std::string& region);

    void convertDialString(std::string& number) override;

    /** Converts the number once, so that it is at hand when it is asked for. */
    void analyseNumber(const std::string& number) override;

  private:
    class Impl;
    std::unique_ptr<Impl> impl_;
};
} // namespace Host
