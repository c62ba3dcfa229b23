#include "host/internal/NameMatch.h"

#include <algorithm>
#include <boost/algorithm/string/classification.hpp>
#include <boost/algorithm/string/predicate.hpp>
#include <boost/algorithm/string/split.hpp>
#include <boost/algorithm/string/trim.hpp>

namespace Host
{
NameMatch::NameMatch(const std::string& text)
{
    const std::string trimmed = boost::algorithm::trim_copy(text);
    if (!trimmed.empty())
    {
        boost::algorithm::split(words_, trimmed, boost::algorithm::is_space(), boost::algorithm::token_compress_on);
    }
}

bool NameMatch::operator()(const std::string& firstName, const std::string& lastName) const
{
    const std::string name = firstName + ' ' + lastName;
    return !words_.empty() &&
           std::all_of(words_.begin(), words_.end(),
                       [&name](const std::string& word) { return boost::algorithm::icontains(name, word); });
}
} // namespace Host
