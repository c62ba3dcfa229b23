/**
 * Contact pictures on their way from temporary files to those that last.
 *
 * The services leave pictures in /tmp, where anybody may put files and links: only plain names are followed, never
 * links, and nothing that is larger than a picture can be is read. Not owned by anybody after it is moved: the
 * phonebook names it.
 */
#pragma once

#include <string>

namespace ConversationAPI
{
class ContactPictures
{
  public:
    /** Where pictures last, a directory that is made with the first of them; "" for nowhere, which is so at first. */
    void setPictureDirectory(const std::string& directory) { directory_ = directory; }

    /**
     * The path of the picture that a contact's message names. A temporary picture is moved to where it lasts; failing
     * that, the name without "/tmp/". A name that is found in the picture directory gets its path.
     */
    std::string pathOfNamedPicture(const std::string& picture) const;

    /** The path of the picture of a contact that is to be stored: the new one of a picture that was moved. */
    std::string pathToStore(const std::string& path) const;

    /** Where the picture's file lies from now on; "" when it could not be moved. The name has no path. */
    std::string makeAvatarPersistent(const std::string& name) const;

    /** Removes the prefix, if it is there. */
    static void retrieveImageName(std::string& name, const std::string& prefix);

    /** Where a web-service contact's picture is kept for the time being; "" for an id of which nothing is left. */
    static std::string createFilenameForWSIAvatar(const std::string& id);

    /** Keeps a web-service contact's picture; answers its path, "" for none and when it could not be written. */
    static std::string storeWSIAvatar(const std::string& id, const std::string& bytes);

  private:
    std::string pathInDirectory(const std::string& name) const;

    std::string directory_;
};
} // namespace ConversationAPI
