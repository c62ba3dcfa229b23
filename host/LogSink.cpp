#include "host/LogSink.h"

#include "host/Clock.h"
#include "host/internal/LogFormat.h"
#include "platform/Logging.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <ctime>

namespace Host
{
namespace
{
constexpr int FIRST_LEVEL = 2;

using Guard = std::lock_guard<std::recursive_mutex>;

void writeLine(std::FILE* stream, const std::string& line)
{
    const std::string whole = line + '\n';
    std::fwrite(whole.data(), 1, whole.size(), stream);
    std::fflush(stream);
}

const char* orUnknown(const char* text)
{
    return text != nullptr ? text : "?";
}

std::string timeStamp()
{
    const std::time_t now = currentTime(nullptr);
    std::tm utc{};
    std::array<char, 64> text{};
    if (gmtime_r(&now, &utc) == nullptr || std::strftime(text.data(), text.size(), "%Y-%m-%dT%H:%M:%SZ", &utc) == 0)
    {
        return std::to_string(now);
    }
    return text.data();
}

std::string withoutControlCharacters(std::string_view text)
{
    constexpr std::string_view HEX = "0123456789abcdef";
    std::string clean;
    clean.reserve(text.size());
    for (const char character : text)
    {
        const auto byte = static_cast<unsigned char>(character);
        if (byte >= 0x20U && byte != 0x7FU)
        {
            clean += character;
        }
        else
        {
            clean.append("\\x").append(1, HEX[byte >> 4U]).append(1, HEX[byte & 0xFU]);
        }
    }
    return clean;
}
} // namespace

LogSink& LogSink::instance()
{
    static LogSink& sink = *new LogSink; // lines may come from statics that are destroyed late
    return sink;
}

LogSink::LogSink() : highestLevel_(FIRST_LEVEL), level_(FIRST_LEVEL), plainText_(false)
{
    writeToStderr();
}

void LogSink::reset()
{
    const Guard guard(mutex_);
    moduleLevels_.clear();
    setLevel(FIRST_LEVEL);
    plainText_ = false;
    pseudonyms_ = LogPseudonyms();
    writeToStderr();
}

void LogSink::setLevel(int level)
{
    const Guard guard(mutex_);
    level_ = level;
    refreshHighestLevel();
}

void LogSink::setModuleLevel(const std::string& module, int level)
{
    const Guard guard(mutex_);
    moduleLevels_[module] = level;
    refreshHighestLevel();
}

void LogSink::refreshHighestLevel()
{
    int highest = level_;
    for (const auto& [module, level] : moduleLevels_)
    {
        highest = std::max(highest, level);
    }
    highestLevel_ = highest;
}

void LogSink::writeToStderr()
{
    writeTo([](const std::string& line) { writeLine(stderr, line); });
}

bool LogSink::writeToFile(const std::string& path)
{
    std::FILE* opened = std::fopen(path.c_str(), "ae");
    if (opened == nullptr)
    {
        return false;
    }
    const std::shared_ptr<std::FILE> file(opened, &std::fclose);
    writeTo([file](const std::string& line) { writeLine(file.get(), line); });
    return true;
}

void LogSink::writeTo(Writer writer)
{
    const Guard guard(mutex_);
    writer_ = writer ? std::make_shared<const Writer>(std::move(writer)) : nullptr;
}

void LogSink::setPlainText(bool plainText)
{
    const Guard guard(mutex_);
    plainText_ = plainText;
}

void LogSink::setPseudonymKey(const std::string& key)
{
    const Guard guard(mutex_);
    pseudonyms_ = LogPseudonyms(key);
}

bool LogSink::wants(const char* module, int level) const
{
    if (level > highestLevel_.load(std::memory_order_relaxed))
    {
        return false;
    }
    const Guard guard(mutex_);
    const auto own = moduleLevels_.find(std::string_view(orUnknown(module)));
    return level <= (own != moduleLevels_.end() ? own->second : level_);
}

void LogSink::write(const char* module, const char* file, int level, int line, const char* format, va_list arguments)
{
    const int errorNumber = errno; // a caller that logs a failure may still want to look at it
    const Guard guard(mutex_);
    if (!writing_ && writer_ && wants(module, level))
    {
        writing_ = true;
        try
        {
            const std::string text = message(format, arguments);
            const std::shared_ptr<const Writer> writer = writer_; // it may replace itself while it runs
            (*writer)(timeStamp() + ' ' + std::to_string(level) + ' ' + orUnknown(module) + ' ' + orUnknown(file) +
                      ':' + std::to_string(line) + ' ' + text);
        }
        catch (...)
        {
            std::fputs("LogSink: a line is lost, its writer failed\n", stderr);
        }
        writing_ = false;
    }
    errno = errorNumber;
}

std::string LogSink::message(const char* format, va_list arguments)
{
    std::string text = formatLogText(
        orUnknown(format), arguments,
        [this](std::string_view argument)
        { return withoutControlCharacters(plainText_ ? std::string(argument) : pseudonyms_.hide(argument)); });
    while (!text.empty() && text.back() == '\n')
    {
        text.pop_back();
    }
    return text;
}
} // namespace Host

bool loggingOnAppOrv(const char* module, int level)
{
    return Host::LogSink::instance().wants(module, level);
}

void logAppOrv(const char* module, const char* file, int level, int line, const char* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    Host::LogSink::instance().write(module, file, level, line, format, arguments);
    va_end(arguments);
}
