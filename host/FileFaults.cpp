#include "host/internal/FileFaults.h"

#include "host/internal/LogFormat.h"
#include "host/internal/StoredDatabase.h"

#include <SQLiteCpp/Exception.h>
#include <array>
#include <ctime>
#include <exception>
#include <sqlite3.h>
#include <system_error>

namespace Host
{
namespace
{
namespace fs = std::filesystem;

constexpr const char* FILE_FAULTS_LOG_FILE = "./host/FileFaults";

/** Where every new file is damaged at once, the disk must not fill up with them. */
constexpr int MOST_SET_ASIDE = 3;

/** A name beside the file that nothing has. */
fs::path nameToSetAside(const fs::path& file)
{
    const std::time_t now = std::time(nullptr); // not a simulated one: somebody will look for it
    std::tm utc{};
    gmtime_r(&now, &utc);
    std::array<char, 64> time{};
    std::strftime(time.data(), time.size(), ".damaged-%Y%m%dT%H%M%SZ", &utc);
    const std::string name = file.string() + time.data();
    fs::path unused = name;
    std::error_code error;
    for (int i = 1; fs::exists(unused, error); ++i)
    {
        unused = name + "-" + std::to_string(i);
    }
    return unused;
}
} // namespace

FileFaults::FileFaults(fs::path file, const FileWording& wording) : file_(std::move(file)), wording_(wording) {}

bool FileFaults::attempt(const std::function<void()>& action, bool isOpening)
{
    try
    {
        action();
        note(Fault::NONE);
        return true;
    }
    catch (const NewerSchema&)
    {
        note(Fault::NEWER);
    }
    catch (const SQLite::Exception& problem)
    {
        note(faultOf(problem.getErrorCode(), isOpening), problem.what());
    }
    catch (const std::exception& problem)
    {
        note(Fault::OTHER, problem.what());
    }
    return false;
}

bool FileFaults::attemptToRead(const std::function<void()>& action)
{
    try
    {
        action();
        return true;
    }
    catch (const SQLite::Exception& problem)
    {
        if (faultOf(problem.getErrorCode(), true) == Fault::DAMAGED)
        {
            note(Fault::DAMAGED, problem.what());
        }
        return false;
    }
    catch (const std::exception&)
    {
        return false;
    }
}

bool FileFaults::isDamaged() const
{
    return fault_ == Fault::DAMAGED;
}

bool FileFaults::needsReopening() const
{
    return fault_ == Fault::DAMAGED || fault_ == Fault::OTHER;
}

bool FileFaults::mayBeReadable() const
{
    return fault_ != Fault::LOCKED && fault_ != Fault::NEWER && fault_ != Fault::DAMAGED;
}

void FileFaults::logGone() const
{
    log(2, "was deleted or moved");
}

void FileFaults::log(int level, const std::string& what) const
{
    logInFull(FILE_FAULTS_LOG_FILE, level, __LINE__,
              std::string("The ") + wording_.file + " file '" + file_.string() + "' " + what);
}

void FileFaults::logNoCheckpoint(const char* reason) const
{
    logInFull(FILE_FAULTS_LOG_FILE, 3, __LINE__,
              std::string("No checkpoint of the ") + wording_.file + " file: " + reason);
}

std::string FileFaults::problem() const
{
    if (fault_ != Fault::NONE)
    {
        return std::string("The ") + wording_.name + " " + file_.string() + " " + describe(fault_) + "." +
               (lacksLog_ ? " What its log has cannot be read." : "");
    }
    return setAside_.empty()
               ? std::string()
               : std::string("The ") + wording_.name + " was damaged and has been begun anew. The damaged file is " +
                     setAside_.string() + ".";
}

/** The write-ahead log goes first, under the name that SQLite looks for: left alone, it would be deleted. */
bool FileFaults::setAside()
{
    if (timesSetAside_ == MOST_SET_ASIDE)
    {
        return false;
    }
    ++timesSetAside_;
    const fs::path name = nameToSetAside(file_);
    std::error_code error;
    for (const char* suffix : {"-wal", "-shm"})
    {
        fs::rename(file_.string() + suffix, name.string() + suffix, error); // mostly there is none
    }
    fs::rename(file_, name, error);
    if (error)
    {
        std::error_code ignored;
        fs::rename(name.string() + "-wal", file_.string() + "-wal", ignored); // it must not stay without its log
        return false;
    }
    setAside_ = name;
    log(2, "is set aside as '" + name.string() + "'");
    return true;
}

void FileFaults::note(Fault fault, const std::string& reason)
{
    if (fault == fault_)
    {
        return;
    }
    fault_ = fault;
    log(fault == Fault::NONE ? 3 : 2, describe(fault) + (reason.empty() ? "" : ": " + reason));
}

FileFaults::Fault FileFaults::faultOf(int sqliteResult, bool isOpening)
{
    switch (sqliteResult)
    {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        return Fault::LOCKED;
    case SQLITE_FULL:
        return Fault::FULL;
    case SQLITE_READONLY:
    case SQLITE_PERM:
        return Fault::READ_ONLY;
    case SQLITE_CANTOPEN:
        return Fault::OUT_OF_REACH;
    case SQLITE_CORRUPT:
    case SQLITE_NOTADB:
        return Fault::DAMAGED;
    case SQLITE_ERROR: // SQL that is not at fault itself: while opening, tables are missing, or others than ours
        return isOpening ? Fault::DAMAGED : Fault::OTHER;
    default:
        return Fault::OTHER;
    }
}

std::string FileFaults::describe(Fault fault)
{
    switch (fault)
    {
    case Fault::NONE:
        return "can be written";
    case Fault::LOCKED:
        return "is locked by another program";
    case Fault::FULL:
        return "cannot be written, no room is left";
    case Fault::READ_ONLY:
        return "can only be read";
    case Fault::OUT_OF_REACH:
        return "cannot be opened";
    case Fault::NEWER:
        return "was written by a newer version of this program";
    case Fault::DAMAGED:
        return "is damaged";
    case Fault::OTHER:
        break;
    }
    return "cannot be read or written";
}
} // namespace Host
