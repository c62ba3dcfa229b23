#include "sources/ContactPictures.h"

#include "Log.h"
#include "platform/ClientUtils.h"
#include "sources/DirectoryServiceConversationSourceLog.h"
#include "sources/PictureFile.h"

#include <algorithm>
#include <cctype>
#include <filesystem>

namespace ConversationAPI
{
namespace
{
constexpr const char* TEMPORARY_DIRECTORY = "/tmp/";
constexpr const char* DIRECTORY_PREFIX = "DirSvc_";
constexpr const char* WSI_PREFIX = "WSISvc_";
constexpr const char* EXCHANGE_PREFIX = "EWS_";
constexpr const char* SOURCE_PREFIXES[] = {DIRECTORY_PREFIX, EXCHANGE_PREFIX, WSI_PREFIX};

bool beginsWith(const std::string& text, const std::string& prefix)
{
    return text.compare(0, prefix.size(), prefix) == 0;
}

bool hasSourcePrefix(const std::string& name)
{
    return std::any_of(std::begin(SOURCE_PREFIXES), std::end(SOURCE_PREFIXES),
                       [&name](const char* prefix) { return beginsWith(name, prefix); });
}

/** All of them: a name that still had one would be taken for a temporary picture's the next time it is read. */
std::string withoutSourcePrefixes(std::string name)
{
    while (hasSourcePrefix(name))
    {
        for (const char* prefix : SOURCE_PREFIXES)
        {
            ContactPictures::retrieveImageName(name, prefix);
        }
    }
    return name;
}

/** Whether the name can only mean a file of the directory that it is looked for in. */
bool isPlainFileName(const std::string& name)
{
    return !name.empty() && name != "." && name.find('/') == std::string::npos &&
           name.find("..") == std::string::npos && name.find('\0') == std::string::npos;
}
} // namespace

void ContactPictures::retrieveImageName(std::string& name, const std::string& prefix)
{
    if (beginsWith(name, prefix))
    {
        CONVERSATION_LOG(DIRECTORY_SOURCE_LOG_FILE, 5, "retrieveImageName: prefix is found.");
        name.erase(0, prefix.size());
    }
}

std::string ContactPictures::pathInDirectory(const std::string& name) const
{
    return directory_ + (directory_.back() == '/' ? "" : "/") + name;
}

std::string ContactPictures::pathOfNamedPicture(const std::string& picture) const
{
    if (picture.empty())
    {
        return {};
    }
    CONVERSATION_LOG(DIRECTORY_SOURCE_LOG_FILE, 6, "createConversationFromXml image[%s]", picture.c_str());
    std::string name = picture;
    retrieveImageName(name, TEMPORARY_DIRECTORY);
    if (hasSourcePrefix(name))
    {
        const std::string moved = makeAvatarPersistent(name);
        CONVERSATION_LOG(DIRECTORY_SOURCE_LOG_FILE, 6,
                         "createConversationFromXml makeAvatarPersistent old[%s] -> new[%s]", name.c_str(),
                         moved.c_str());
        return moved.empty() ? name : moved;
    }
    const bool isKept = !directory_.empty() && isPlainFileName(name) && isPictureFile(pathInDirectory(name));
    return isKept ? pathInDirectory(name) : name;
}

std::string ContactPictures::pathToStore(const std::string& path) const
{
    std::string folder;
    std::string name;
    ClientUtils::spiltFilenameAndPath(path, folder, name);
    const bool isTemporary =
        name.find(DIRECTORY_PREFIX) != std::string::npos || name.find(WSI_PREFIX) != std::string::npos;
    if (!isTemporary || (!folder.empty() && folder != TEMPORARY_DIRECTORY))
    {
        return path;
    }
    const std::string moved = makeAvatarPersistent(name);
    return moved.empty() ? path : moved;
}

/**
 * A picture that was moved before is not in /tmp any more; the phonebook may still call it by its old name. While there
 * is a temporary picture, what is kept under its name may be another one.
 */
std::string ContactPictures::makeAvatarPersistent(const std::string& name) const
{
    const std::string plainName = withoutSourcePrefixes(name);
    if (directory_.empty() || !isPlainFileName(plainName) || !isPlainFileName(name))
    {
        CONVERSATION_LOG(DIRECTORY_SOURCE_LOG_FILE, 3, "makeAvatarPersistent cannot keep '%s'", name.c_str());
        return {};
    }
    const std::string temporary = TEMPORARY_DIRECTORY + name;
    std::string kept = pathInDirectory(plainName);
    if (!isNameTaken(temporary) && isPictureFile(kept))
    {
        return kept;
    }
    std::error_code error; // then moving fails
    std::filesystem::create_directories(directory_, error);
    std::string moved = movePicture(temporary, kept);
    if (moved.empty())
    {
        CONVERSATION_LOG(DIRECTORY_SOURCE_LOG_FILE, 2, "makeAvatarPersistent '%s' could not be moved to '%s'",
                         name.c_str(), kept.c_str());
    }
    return moved;
}

std::string ContactPictures::createFilenameForWSIAvatar(const std::string& id)
{
    std::string name;
    std::copy_if(id.begin(), id.end(), std::back_inserter(name),
                 [](unsigned char c) { return (c < 0x80 && std::isalnum(c) != 0) || c == '_' || c == '-'; });
    return name.empty() ? name : std::string(TEMPORARY_DIRECTORY) + WSI_PREFIX + name + ".png";
}

std::string ContactPictures::storeWSIAvatar(const std::string& id, const std::string& bytes)
{
    std::string path = bytes.empty() ? std::string() : createFilenameForWSIAvatar(id);
    if (path.empty())
    {
        return {};
    }
    if (!writePicture(path, bytes))
    {
        CONVERSATION_LOG(DIRECTORY_SOURCE_LOG_FILE, 2, "picture of web-service contact %s could not be written to '%s'",
                         id.c_str(), path.c_str());
        return {};
    }
    return path;
}
} // namespace ConversationAPI
