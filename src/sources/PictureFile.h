/** Picture files in folders that others write to as well: links are never followed, sizes are bounded. */
#pragma once

#include <string>

namespace ConversationAPI
{
/** Whether there is a file, and not a link to one. */
bool isPictureFile(const std::string& path);

/** Across file systems, too; false when nothing was moved. What was there under the new name is replaced. */
bool movePicture(const std::string& from, const std::string& to);

/** The file appears whole or not at all; false when it does not. */
bool writePicture(const std::string& path, const std::string& bytes);
} // namespace ConversationAPI
