#include "sources/PictureFile.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <optional>
#include <sys/stat.h>
#include <unistd.h>

namespace ConversationAPI
{
namespace
{
constexpr std::size_t LARGEST_PICTURE = 4 * 1024 * 1024;
constexpr int MOST_OF_A_NAME = 100;
constexpr mode_t READABLE_BY_ALL = 0644;

class OpenFile
{
  public:
    OpenFile(const std::string& path, int flags)
        : descriptor_(::open(path.c_str(), flags | O_NOFOLLOW | O_CLOEXEC, READABLE_BY_ALL))
    {
    }
    ~OpenFile()
    {
        if (isOpen())
        {
            ::close(descriptor_);
        }
    }

    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;

    bool isOpen() const { return descriptor_ >= 0; }

    /** A file under a second name may be one that nobody meant to give away. */
    bool isOrdinary() const
    {
        struct stat about = {};
        return isOpen() && ::fstat(descriptor_, &about) == 0 && S_ISREG(about.st_mode) && about.st_nlink == 1;
    }

    /** Nothing when reading fails or there is more than a picture can have. */
    std::optional<std::string> readAll() const
    {
        std::string bytes;
        std::array<char, 65536> part{};
        for (ssize_t length = read(part); length != 0; length = read(part))
        {
            if (length < 0 || bytes.size() + static_cast<std::size_t>(length) > LARGEST_PICTURE)
            {
                return std::nullopt;
            }
            bytes.append(part.data(), static_cast<std::size_t>(length));
        }
        return bytes;
    }

    bool writeAll(const std::string& bytes) const
    {
        for (std::size_t written = 0; written < bytes.size();)
        {
            const ssize_t length = ::write(descriptor_, bytes.data() + written, bytes.size() - written);
            if (length < 0 && errno != EINTR)
            {
                return false;
            }
            written += length > 0 ? static_cast<std::size_t>(length) : 0;
        }
        return ::fsync(descriptor_) == 0;
    }

  private:
    template <typename Buffer>
    ssize_t read(Buffer& buffer) const
    {
        ssize_t length = -1;
        do
        {
            length = ::read(descriptor_, buffer.data(), buffer.size());
        } while (length < 0 && errno == EINTR);
        return length;
    }

    int descriptor_;
};

/** Opening does not wait: what looks like a picture may be a pipe. */
std::optional<std::string> readPicture(const std::string& path)
{
    const OpenFile file(path, O_RDONLY | O_NONBLOCK);
    return file.isOrdinary() ? file.readAll() : std::nullopt;
}

bool writeNewFile(const std::string& path, const std::string& bytes)
{
    const OpenFile file(path, O_WRONLY | O_CREAT | O_EXCL);
    return file.isOpen() && file.writeAll(bytes);
}

std::string numbered(const std::filesystem::path& path, int number)
{
    return path.parent_path() / (path.stem().string() + "_" + std::to_string(number) + path.extension().string());
}

/** That of a file which holds these bytes already, or a free one; "" when there are too many of the name. */
std::string pathFor(const std::string& bytes, const std::string& wanted)
{
    std::string path = wanted;
    for (int number = 1; isNameTaken(path) && readPicture(path) != bytes; ++number)
    {
        if (number > MOST_OF_A_NAME)
        {
            return {};
        }
        path = numbered(wanted, number);
    }
    return path;
}
} // namespace

bool isPictureFile(const std::string& path)
{
    struct stat about = {};
    return ::lstat(path.c_str(), &about) == 0 && S_ISREG(about.st_mode);
}

bool isNameTaken(const std::string& path)
{
    struct stat about = {};
    return ::lstat(path.c_str(), &about) == 0;
}

std::string movePicture(const std::string& from, const std::string& to)
{
    const std::optional<std::string> bytes = readPicture(from);
    std::string path = bytes ? pathFor(*bytes, to) : std::string();
    if (path.empty() || (!isNameTaken(path) && !writePicture(path, *bytes)))
    {
        return {};
    }
    ::unlink(from.c_str());
    return path;
}

bool writePicture(const std::string& path, const std::string& bytes)
{
    const std::string unfinished = path + ".part";
    ::unlink(unfinished.c_str()); // left over from a telephone that was switched off
    if (bytes.size() > LARGEST_PICTURE)
    {
        return false;
    }
    if (!writeNewFile(unfinished, bytes) || std::rename(unfinished.c_str(), path.c_str()) != 0)
    {
        ::unlink(unfinished.c_str());
        return false;
    }
    return true;
}
} // namespace ConversationAPI
