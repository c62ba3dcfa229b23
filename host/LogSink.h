/**
 * Where the log lines of the library and of the host go: what stands behind loggingOnAppOrv() and logAppOrv().
 *
 * A log is often sent to somebody else, so names and numbers in it are pseudonyms unless plain text is asked for.
 * All text arguments (%s) of a line count as personal and pass through LogPseudonyms, which says what it hides;
 * the format itself, numbers (%d and the like) and pointers are written as they are. Control characters in text
 * arguments are written as \xNN, so that one message is one line and no argument can forge another. A line reads
 *
 *     2026-03-05T08:07:00Z 2 ConversationAPI ./src/Conversation:120 text
 *
 * with the time of Host::currentTime(), level, module, file and line. One sink serves the process; all operations
 * may be called from any thread. At first it writes lines up to level 2 to stderr, with pseudonyms under a key
 * drawn at random.
 */
#pragma once

#include "host/LogPseudonyms.h"

#include <atomic>
#include <cstdarg>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string>

namespace Host
{
class LogSink
{
  public:
    /** Given whole lines without a line feed, one call at a time. What it logs itself is dropped. */
    using Writer = std::function<void(const std::string& line)>;

    static LogSink& instance();

    LogSink(const LogSink&) = delete;
    LogSink& operator=(const LogSink&) = delete;

    /** Back to what it was at first. */
    void reset();

    /** Lines up to this level are written; 0 writes none, 6 all. */
    void setLevel(int level);

    /** A module's own level, which goes before the general one. */
    void setModuleLevel(const std::string& module, int level);

    void writeToStderr();

    /** Appends to a file; false, and everything as it was, when it cannot be opened. */
    bool writeToFile(const std::string& path);

    /** Null drops every line. */
    void writeTo(Writer writer);

    /** Whether names and numbers are written as they are. */
    void setPlainText(bool plainText);

    /** Makes the pseudonyms those of every other run with the same key. */
    void setPseudonymKey(const std::string& key);

    bool wants(const char* module, int level) const;

    /** Writes one line if it is wanted. `arguments` is read from a copy. */
    void write(const char* module, const char* file, int level, int line, const char* format, va_list arguments);

  private:
    LogSink();

    std::string message(const char* format, va_list arguments);
    void refreshHighestLevel();

    mutable std::recursive_mutex mutex_;
    std::atomic<int> highestLevel_; ///< spares the lock for lines that no module wants
    int level_;
    std::map<std::string, int, std::less<>> moduleLevels_;
    bool plainText_;
    LogPseudonyms pseudonyms_;
    std::shared_ptr<const Writer> writer_;
    bool writing_ = false;
};
} // namespace Host
