/**
 * The telephone's log.
 *
 * The library asks loggingOnAppOrv() first and builds the arguments of a line only when it is wanted.
 * Levels: 2 failures and impossible states, 3 notable facts, 4 directory-wide updates, 5 event traces,
 * 6 detailed traces. Both functions may be called from any thread.
 */
#pragma once

/** Whether a line of this module and level would be written. */
bool loggingOnAppOrv(const char* module, int level);

/** Writes one line; `format` and what follows are those of printf. Calls are compiled as rare. */
void logAppOrv(const char* module, const char* file, int level, int line, const char* format, ...)
    __attribute__((format(printf, 5, 6), cold));
