/**
 * The library's log line.
 *
 * A macro, because a function could neither leave its arguments unevaluated when the line is not wanted, nor
 * know its caller's line, nor keep the compiler's check of the printf format. `file` is the name under which the
 * line appears; a class that logs has a constant for it, ..._LOG_FILE, that its collaborators use as well.
 */
#pragma once

#include "platform/Logging.h"

#define CONVERSATION_LOG(file, level, ...)                                                                             \
    do                                                                                                                 \
    {                                                                                                                  \
        if (loggingOnAppOrv("ConversationAPI", level))                                                                 \
        {                                                                                                              \
            logAppOrv("ConversationAPI", file, level, __LINE__, __VA_ARGS__);                                          \
        }                                                                                                              \
    } while (false)
