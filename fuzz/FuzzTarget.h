/**
 * What all fuzzers have in common.
 *
 * A fuzzer is one function, called with one input after another: by libFuzzer, which makes them up, or by the replay,
 * which reads them from files. It hands the input to an operation that reads texts from outside and looks whether what
 * came of it is as promised. A broken promise ends the program, as a crash does.
 */
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace Fuzz
{
/** Every fuzzer defines its own. The log is written at its highest level, to nowhere. */
void tryInput(const std::string& input);

/** Ends the program unless the promise was `kept`. `found` is shown then. */
void expect(bool kept, const char* promise, const std::string& found = "");

bool hasDuplicates(std::vector<std::string> texts);
} // namespace Fuzz

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size);
