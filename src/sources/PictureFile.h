/** Picture files in folders that others write to as well: links are never followed, sizes are bounded. */
#pragma once

#include <string>

namespace ConversationAPI
{
/** Whether there is a file, and not a link to one. */
bool isPictureFile(const std::string& path);

/** Whether there is anything of that name, a link included. */
bool isNameTaken(const std::string& path);

/**
 * Across file systems, too; answers where the picture is, "" when it was not moved. Another picture of that name stays
 * what it is: the one that is moved gets a number.
 */
std::string movePicture(const std::string& from, const std::string& to);

/** The file appears whole or not at all; false when it does not. */
bool writePicture(const std::string& path, const std::string& bytes);
} // namespace ConversationAPI
