#include "FuzzTarget.h"

#include "host/LogSink.h"

#include <algorithm>
#include <cstdlib>
#include <iostream>

namespace
{
/** All log lines are formatted: their arguments are texts from outside. Pseudonyms would only cost time. */
bool setUpLog()
{
    Host::LogSink& sink = Host::LogSink::instance();
    sink.setLevel(6);
    sink.setPlainText(true);
    sink.writeTo([](const std::string&) {});
    return true;
}
} // namespace

namespace Fuzz
{
void expect(bool kept, const char* promise, const std::string& found)
{
    if (!kept)
    {
        std::cerr << "Broken promise: " << promise << "\nFound: " << found << std::endl;
        std::abort();
    }
}

bool hasDuplicates(std::vector<std::string> texts)
{
    std::sort(texts.begin(), texts.end());
    return std::adjacent_find(texts.begin(), texts.end()) != texts.end();
}
} // namespace Fuzz

int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size)
{
    static const bool isSetUp = setUpLog();
    static_cast<void>(isSetUp);
    Fuzz::tryInput(std::string(data, data + size));
    return 0;
}
