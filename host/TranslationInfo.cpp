#include "platform/TranslatorIfc.h"

TranslationInfo::TranslationInfo(const std::string& key) : key_(key) {}

TranslationInfo::TranslationInfo(const std::string& key, const std::vector<std::string>& arguments)
    : key_(key), arguments_(arguments)
{
}

const std::string& TranslationInfo::key() const
{
    return key_;
}

const std::vector<std::string>& TranslationInfo::arguments() const
{
    return arguments_;
}
