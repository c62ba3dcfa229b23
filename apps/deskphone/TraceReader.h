/**
 * Reads a trace as a whole and checks it, before anything of it is applied.
 *
 * docs/trace.md describes the format. Bounded: no line is longer than a mebibyte.
 */
#pragma once

#include "Trace.h"

#include <istream>
#include <stdexcept>
#include <string>

namespace Deskphone
{
/** A trace that is broken; the text is "FILE:LINE: what is wrong". */
class BrokenTrace : public std::runtime_error
{
  public:
    using std::runtime_error::runtime_error;
};

/** The trace cannot be read at all. */
class UnreadableTrace : public std::runtime_error
{
  public:
    using std::runtime_error::runtime_error;
};

/** `file` is a path, "-" for standard input. Throws BrokenTrace and UnreadableTrace. */
Trace readTrace(const std::string& file);

/** The same from a stream; `name` stands for it in messages. */
Trace readTrace(std::istream& stream, const std::string& name);
} // namespace Deskphone
