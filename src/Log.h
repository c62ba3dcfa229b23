/**
 * The library's log line.
 *
 * A macro, because a function could neither leave its arguments unevaluated when the line is not wanted, nor
 * know its caller's line, nor keep the compiler's check of the printf format. Each source file that logs
 * defines LOG_FILE, the name under which its lines appear, in its unnamed namespace.
 */
#pragma once

#include "platform/Logging.h"

#define CONVERSATION_LOG(level, ...)                                                                                   \
    do                                                                                                                 \
    {                                                                                                                  \
        if (loggingOnAppOrv("ConversationAPI", level))                                                                 \
        {                                                                                                              \
            logAppOrv("ConversationAPI", LOG_FILE, level, __LINE__, __VA_ARGS__);                                      \
        }                                                                                                              \
    } while (false)
