/** How directories in memory find people: all words of a text stand in the name, whatever their case. */
#pragma once

#include <string>
#include <vector>

namespace Host
{
class NameMatch
{
  public:
    explicit NameMatch(const std::string& text);

    /** A text without words finds nobody. */
    bool operator()(const std::string& firstName, const std::string& lastName) const;

  private:
    std::vector<std::string> words_;
};
} // namespace Host
