#include "host/Translator.h"

#include "host/internal/LogFormat.h"
#include "host/internal/MessageCatalogue.h"
#include "platform/Logging.h"

#include <boost/locale/gnu_gettext.hpp>
#include <cctype>
#include <dlfcn.h>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <vector>

namespace Host
{
namespace
{
namespace fs = std::filesystem;
using Messages = boost::locale::message_format<char>;

constexpr const char* TRANSLATOR_LOG_FILE = "./host/Translator";
constexpr const char* FALLBACK_LANGUAGE = "en";
constexpr const char* DOMAIN = "conversation";
constexpr std::string_view PREFIX = "Conv.List.TimeSt.";

/** The letters that a language code begins with, in lower case; never part of a path that leads elsewhere. */
std::string languageOf(const std::string& code)
{
    std::string language;
    for (const char letter : code)
    {
        if (std::isalpha(static_cast<unsigned char>(letter)) == 0)
        {
            break;
        }
        language += static_cast<char>(std::tolower(static_cast<unsigned char>(letter)));
    }
    return language;
}

fs::path catalogueOf(const std::string& language, const std::string& directory)
{
    return fs::path(directory) / language / "LC_MESSAGES" / (std::string(DOMAIN) + ".mo");
}

/** `language` is one of languageOf(). */
bool hasCatalogue(const std::string& language, const std::string& directory)
{
    std::error_code error;
    return !language.empty() && fs::is_regular_file(catalogueOf(language, directory), error);
}

std::vector<char> readCatalogue(const fs::path& path)
{
    std::ifstream file(path, std::ios::binary);
    std::vector<char> bytes((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    if (!isSoundCatalogue(bytes))
    {
        throw std::runtime_error("damaged file");
    }
    return bytes;
}

std::string expand(const std::string& pattern, const std::vector<std::string>& arguments)
{
    std::string text;
    for (std::size_t at = 0; at < pattern.size(); ++at)
    {
        const bool placeholder = pattern.compare(at, 1, "{") == 0 && at + 2 < pattern.size() &&
                                 pattern[at + 1] >= '1' && pattern[at + 1] <= '9' && pattern[at + 2] == '}';
        if (!placeholder)
        {
            text += pattern[at];
            continue;
        }
        const auto index = static_cast<std::size_t>(pattern[at + 1] - '1');
        text += index < arguments.size() ? arguments[index] : "";
        at += 2;
    }
    return text;
}

std::string untranslated(const TranslationInfo& info)
{
    std::string text;
    for (const std::string& argument : info.arguments())
    {
        text += argument;
    }
    const bool prefixed = info.key().compare(0, PREFIX.size(), PREFIX) == 0;
    return text + info.key().substr(prefixed ? PREFIX.size() : 0);
}
} // namespace

Translator::Translator(const std::string& language, const std::string& directory) : messages_(std::locale::classic())
{
    if (load(languageOf(language), directory))
    {
        return;
    }
    logInFull(TRANSLATOR_LOG_FILE, 3, __LINE__,
              "No catalogue for language '" + language + "' in '" + directory + "', taking English");
    if (!load(FALLBACK_LANGUAGE, directory))
    {
        logInFull(TRANSLATOR_LOG_FILE, 2, __LINE__, "No English catalogue in '" + directory + "'");
    }
}

bool Translator::speaks(const std::string& language, const std::string& directory)
{
    return hasCatalogue(languageOf(language), directory);
}

bool Translator::load(const std::string& language, const std::string& directory)
{
    const fs::path path = catalogueOf(language, directory);
    if (!hasCatalogue(language, directory))
    {
        return false;
    }
    try
    {
        boost::locale::gnu_gettext::messages_info info;
        info.language = language;
        info.encoding = "UTF-8";
        info.paths.push_back(directory);
        info.domains.emplace_back(DOMAIN);
        info.callback = [&path](const std::string& /*file*/, const std::string& /*encoding*/)
        { return readCatalogue(path); };
        messages_ = std::locale(std::locale::classic(), boost::locale::gnu_gettext::create_messages_facet<char>(info));
    }
    catch (const std::exception& problem)
    {
        logInFull(TRANSLATOR_LOG_FILE, 2, __LINE__,
                  "The catalogue '" + path.string() + "' cannot be read: " + problem.what());
        return false;
    }
    language_ = language;
    return true;
}

std::string Translator::translate(const TranslationInfo& info)
{
    if (info.key().empty() || !std::has_facet<Messages>(messages_)) // "" names the catalogue's own header
    {
        return untranslated(info);
    }
    try
    {
        const auto& messages = std::use_facet<Messages>(messages_);
        const char* pattern = messages.get(messages.domain(DOMAIN), nullptr, info.key().c_str());
        return pattern == nullptr ? untranslated(info) : expand(pattern, info.arguments());
    }
    catch (const std::exception& problem) // a damaged catalogue may only show it here
    {
        logAppOrv("Host", TRANSLATOR_LOG_FILE, 2, __LINE__, "The catalogue is damaged: %s", problem.what());
        return untranslated(info);
    }
}

const std::string& Translator::language() const
{
    return language_;
}

std::string Translator::defaultDirectory()
{
    Dl_info library{};
    fs::path folder = ".";
    if (dladdr(reinterpret_cast<const void*>(&Translator::defaultDirectory), &library) != 0 &&
        library.dli_fname != nullptr)
    {
        folder = fs::path(library.dli_fname).parent_path();
    }
    std::error_code error;
    const fs::path built = folder / "translations";
    return (fs::is_directory(built, error) ? built : folder / HOST_CATALOGUES_FROM_LIBRARY).lexically_normal().string();
}
} // namespace Host
