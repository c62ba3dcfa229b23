/** The telephone's translations. Called on the UI thread. */
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
