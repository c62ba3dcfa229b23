#include "host/internal/JournalFile.h"

#include "host/internal/JournalDatabase.h"
#include "platform/Logging.h"

#include <SQLiteCpp/Exception.h>
#include <array>
#include <boost/algorithm/string/replace.hpp>
#include <ctime>
#include <exception>
#include <fcntl.h>
#include <sqlite3.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace Host
{
namespace
{
namespace fs = std::filesystem;

constexpr const char* LOG_FILE = "./host/JournalFile";

/** Where every new file is damaged at once, the disk must not fill up with them. */
constexpr int MOST_SET_ASIDE = 3;

/** The folder holds whom the user talked to: if it is new, it is the user's alone. */
void makeFolder(const fs::path& folder)
{
    std::error_code error;
    if (fs::create_directories(folder, error))
    {
        fs::permissions(folder, fs::perms::owner_all, error);
    }
}

/** One that exists keeps the rights it has; SQLite gives those of the file to its log. */
void makeFileOfUserAlone(const fs::path& file)
{
    const int descriptor = ::open(file.c_str(), O_CREAT | O_EXCL | O_WRONLY | O_CLOEXEC, S_IRUSR | S_IWUSR);
    if (descriptor != -1)
    {
        ::close(descriptor);
    }
}

std::string forFormat(std::string text)
{
    boost::algorithm::replace_all(text, "%", "%%");
    return text;
}

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

JournalFile::JournalFile(fs::path file, std::uint64_t maxSize) : file_(std::move(file)), maxSize_(maxSize) {}

JournalFile::~JournalFile() = default;

/** Whether it went well. */
template <typename Action>
bool JournalFile::attempt(Action action)
{
    try
    {
        action();
        note(Fault::NONE);
        return true;
    }
    catch (const NewerJournalSchema&)
    {
        note(Fault::NEWER);
    }
    catch (const SQLite::Exception& problem)
    {
        note(faultOf(problem.getErrorCode()), problem.what());
    }
    catch (const std::exception& problem)
    {
        note(Fault::OTHER, problem.what());
    }
    return false;
}

bool JournalFile::open(bool isKnown, std::vector<JournalEntry>& entries)
{
    makeFolder(file_.parent_path());
    if (openForWriting(entries) || (fault_ == Fault::DAMAGED && setAside() && openForWriting(entries)))
    {
        return true;
    }
    const bool mayBeReadable = fault_ != Fault::LOCKED && fault_ != Fault::NEWER && fault_ != Fault::DAMAGED;
    return !isKnown && mayBeReadable && readUnwritable(entries);
}

bool JournalFile::openForWriting(std::vector<JournalEntry>& entries)
{
    const bool isOpened = attempt(
        [this, &entries]
        {
            makeFileOfUserAlone(file_);
            auto database = std::make_unique<JournalDatabase>(file_, maxSize_);
            entries = database->read();
            database_ = std::move(database);
        });
    needsCheckpoint_ = isOpened;
    checkpoint();
    return isOpened;
}

/** Leaves the fault that it is not writable as it is. */
bool JournalFile::readUnwritable(std::vector<JournalEntry>& entries)
{
    try
    {
        entries = JournalDatabase::readUnwritable(file_, lacksLog_);
        return true;
    }
    catch (const SQLite::Exception& problem)
    {
        if (faultOf(problem.getErrorCode()) == Fault::DAMAGED)
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

bool JournalFile::isOpen() const
{
    return database_ != nullptr;
}

bool JournalFile::write(const std::set<std::string>& entryIds, const JournalEntries& entries)
{
    if (!database_->isInPlace())
    {
        logAppOrv("Host", LOG_FILE, 2, __LINE__, "The journal file was deleted or moved");
        database_.reset();
        return false;
    }
    const bool isWritten = attempt([&] { database_->write(entryIds, entries); });
    needsCheckpoint_ = needsCheckpoint_ || isWritten;
    if (fault_ == Fault::DAMAGED || fault_ == Fault::OTHER)
    {
        database_.reset(); // opening it again tells what it is good for
    }
    if (fault_ == Fault::DAMAGED)
    {
        setAside();
    }
    return isWritten;
}

bool JournalFile::needsCheckpoint() const
{
    return database_ != nullptr && needsCheckpoint_;
}

/** One that fails costs nothing: the write-ahead log is as good a place, and if the file is at fault, the next
 *  write tells. */
void JournalFile::checkpoint()
{
    if (!needsCheckpoint())
    {
        return;
    }
    try
    {
        database_->checkpoint();
        needsCheckpoint_ = false;
    }
    catch (const std::exception& problem)
    {
        logAppOrv("Host", LOG_FILE, 3, __LINE__, "No checkpoint of the journal file: %s", problem.what());
    }
}

std::string JournalFile::problem() const
{
    if (fault_ != Fault::NONE)
    {
        return "The call journal " + file_.string() + " " + describe(fault_) +
               (lacksLog_ ? ", nor can its newest calls be read" : "") +
               ". What is new is kept in memory until it can be written.";
    }
    return setAside_.empty() ? std::string()
                             : "The call journal was damaged and has been begun anew. The damaged file is " +
                                   setAside_.string() + ".";
}

/** The write-ahead log goes first, under the name that SQLite looks for: left alone, it would be deleted. */
bool JournalFile::setAside()
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
    const std::string format = "The damaged journal file is set aside as '" + forFormat(name.string()) + "' (%d)";
    logAppOrv("Host", LOG_FILE, 2, __LINE__, format.c_str(), timesSetAside_);
    return true;
}

/** The path is part of the format, so that the log names the file as it is: it is nobody's name. */
void JournalFile::note(Fault fault, const std::string& reason)
{
    if (fault == fault_)
    {
        return;
    }
    fault_ = fault;
    const std::string format = "The journal file '" + forFormat(file_.string()) + "' " + describe(fault) +
                               (reason.empty() ? "" : ": " + forFormat(reason)) + " (%d)";
    logAppOrv("Host", LOG_FILE, fault == Fault::NONE ? 3 : 2, __LINE__, format.c_str(), static_cast<int>(fault));
}

JournalFile::Fault JournalFile::faultOf(int sqliteResult) const
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
        return isOpen() ? Fault::OTHER : Fault::DAMAGED;
    default:
        return Fault::OTHER;
    }
}

/** Without '%', for it becomes part of a format. */
const char* JournalFile::describe(Fault fault)
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
