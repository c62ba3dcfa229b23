/**
 * Journal entry ids in the order in which they were first seen, each once.
 *
 * Adding is what happens all the time and reading is rare, so repetitions are only dropped now and then.
 */
#pragma once

#include "ConversationAPI/ShortText.h"

#include <boost/container/small_vector.hpp>

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace ConversationAPI
{
class JournalEntryIds
{
  public:
    JournalEntryIds() = default;
    JournalEntryIds(const JournalEntryIds& other);
    JournalEntryIds& operator=(const JournalEntryIds&) = delete;

    /** Appends the id unless it is there; also "", that of a message in the mailbox. */
    void add(const std::string& id);
    void add(const JournalEntryIds& others);
    void remove(const std::string& id);

    std::vector<std::string> inOrder() const;

  private:
    using Ids = boost::container::small_vector<std::string, 3>; // most parties have one for each kind of call

    /** What few conversations have: calls of more than one entry. */
    struct More
    {
        More() = default;
        More(const More&) = default;
        More& operator=(const More&) = delete;

        Ids ids;
        std::size_t distinct = 0; ///< how many there were when repetitions were last dropped
    };

    static void dropRepetitions(Ids& ids);
    bool isAmongLatest(const std::string& id) const;
    Ids all() const;
    void assign(Ids ids);

    ShortText first_; ///< "": there is none, or it is among the others
    std::unique_ptr<More> more_;
};
} // namespace ConversationAPI
