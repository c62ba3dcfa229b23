/**
 * What is wrong with a file that the host keeps something in.
 *
 * Nothing throws. What fails is told in the log, once until it is another thing that fails, and by problem(). A damaged
 * file is set aside with its write-ahead log, as FILE.damaged-TIME.
 */
#pragma once

#include <filesystem>
#include <functional>
#include <string>

namespace Host
{
/** How a kind of file is called; the texts last. */
struct FileWording
{
    const char* file; ///< in the log: "journal"
    const char* name; ///< to the user: "call journal"
};

class FileFaults
{
  public:
    FileFaults(std::filesystem::path file, const FileWording& wording);

    /** Does something with the file, which may throw, and notes how it went; whether it went well. */
    bool attempt(const std::function<void()>& action, bool isOpening);

    /** Reads a file that cannot be written, which stays what is wrong with it unless it is damaged, too. */
    bool attemptToRead(const std::function<void()>& action);

    /** What was read is without what only the write-ahead log has. */
    void setLacksLog(bool lacksLog) { lacksLog_ = lacksLog; }

    /** Whether it was damage that let the last attempt fail. */
    bool isDamaged() const;

    /** Whether only opening the file again tells what it is good for. */
    bool needsReopening() const;

    /** Whether, after an attempt that failed, only writing may be what cannot be done. */
    bool mayBeReadable() const;

    /** Gives the file another name, so that a new one can be begun; whether it did. */
    bool setAside();

    /** Tells the log that the file is no longer in its place. */
    void logGone() const;

    /** Tells the log that the write-ahead log stays as long as it is. */
    void logNoCheckpoint(const char* reason) const;

    /** What is wrong, or that a damaged file was set aside, for the user; "" when nothing is to tell. */
    std::string problem() const;

  private:
    enum class Fault
    {
        NONE,
        LOCKED,
        FULL,
        READ_ONLY,
        OUT_OF_REACH,
        NEWER,
        DAMAGED,
        OTHER
    };

    void note(Fault fault, const std::string& reason = "");
    void log(int level, const std::string& what) const;

    static Fault faultOf(int sqliteResult, bool isOpening);
    static std::string describe(Fault fault);

    const std::filesystem::path file_;
    const FileWording wording_;
    Fault fault_ = Fault::NONE;      ///< what went wrong the last time that something was tried
    std::filesystem::path setAside_; ///< the last damaged file under its new name
    int timesSetAside_ = 0;
    bool lacksLog_ = false;
};
} // namespace Host
