/**
 * Journal entry ids in the order in which they were first seen, each once.
 *
 * Adding is what happens all the time and reading is rare, so repetitions are only dropped now and then.
 */
#pragma once

#include <boost/container/small_vector.hpp>

#include <string>
#include <vector>

namespace ConversationAPI
{
class JournalEntryIds
{
  public:
    /** Appends the id unless it is there; "" is no id. */
    void add(const std::string& id);
    void add(const JournalEntryIds& others);
    void remove(const std::string& id);

    std::vector<std::string> inOrder() const;

  private:
    using Ids = boost::container::small_vector<std::string, 1>;

    static void dropRepetitions(Ids& ids);

    Ids ids_;
    std::size_t distinct_ = 0; ///< how many there were when repetitions were last dropped
};
} // namespace ConversationAPI
