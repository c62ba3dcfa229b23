/**
 * The telephone's translations. Called on the UI thread.
 *
 * The library's keys begin "Conv.List.TimeSt.". After that come Now, Yesterday, min, mins, the weekdays Mon, Tue, Wed,
 * Thu, Fri, Sat and Sun, and month.Jan, month.Feb, month.Mar, month.Apr, month.May, month.Jun, month.Jul, month.Aug,
 * month.Sep, month.Oct, month.Nov and month.Dec. min, for one minute, and mins take one argument, the number with a
 * blank after it ("5 "), the others none.
 */
#pragma once

#include <string>
#include <vector>

/** What is to be translated: a key and the arguments that its text takes. */
class TranslationInfo
{
  public:
    explicit TranslationInfo(const std::string& key);
    TranslationInfo(const std::string& key, const std::vector<std::string>& arguments);

    const std::string& key() const;
    const std::vector<std::string>& arguments() const;

  private:
    std::string key_;
    std::vector<std::string> arguments_;
};

class TranslatorIfc
{
  public:
    virtual ~TranslatorIfc() = default;

    /** The text in the user's language; what a missing key gives is the translator's own affair. */
    virtual std::string translate(const TranslationInfo& info) = 0;
};
