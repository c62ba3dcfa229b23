#include "host/PeopleDirectory.h"

#include "host/internal/NameMatch.h"

#include <algorithm>
#include <utility>

namespace Host
{
namespace
{
constexpr std::int64_t ANSWER_MS = 500;
constexpr std::int64_t CANCEL_MS = 1;

std::string valueOf(const PhonebookSearchResults::Entry& person, const char* key)
{
    const auto found = person.find(key);
    return found == person.end() ? "" : found->second;
}
} // namespace

PeopleDirectory::PeopleDirectory(EventLoop& loop) : loop_(loop) {}

void PeopleDirectory::add(const PhonebookSearchResults::Entry& person)
{
    people_.push_back(person);
}

void PeopleDirectory::setObserver(DirectorySearchObserver* observer)
{
    observer_ = observer;
}

/** One that goes on under this id ends first. */
void PeopleDirectory::search(const std::string& searchId, const std::string& text)
{
    if (searches_.count(searchId) != 0)
    {
        loop_.post(
            [this, searchId, isAlive = std::weak_ptr<bool>(isAlive_)]
            {
                if (!isAlive.expired() && observer_ != nullptr)
                {
                    observer_->searchEnded(searchId);
                }
            });
    }
    answerLater(searchId, text, true);
}

void PeopleDirectory::cancel(const std::string& searchId)
{
    if (searches_.count(searchId) != 0)
    {
        answerLater(searchId, "", false);
    }
}

void PeopleDirectory::answerLater(const std::string& searchId, const std::string& text, bool withResults)
{
    searches_[searchId] = {text, loop_.startTimer(withResults ? ANSWER_MS : CANCEL_MS,
                                                  [this, searchId, withResults] { answer(searchId, withResults); })};
}

/** Whoever is told may start another search of this id, or destroy this. */
void PeopleDirectory::answer(const std::string& searchId, bool withResults)
{
    const std::string id = searchId; // the timer's own, which goes with it
    const std::weak_ptr<bool> isAlive = isAlive_;
    const PhonebookSearchResults results = find(searches_[id].text);
    const Search ended = std::move(searches_[id]);
    searches_.erase(id);
    if (withResults && observer_ != nullptr && !results.entries.empty())
    {
        observer_->searchResults(id, results);
    }
    if (!isAlive.expired() && observer_ != nullptr)
    {
        observer_->searchEnded(id);
    }
}

PhonebookSearchResults PeopleDirectory::find(const std::string& text) const
{
    const NameMatch isMeant(text);
    PhonebookSearchResults results;
    std::copy_if(people_.begin(), people_.end(), std::back_inserter(results.entries),
                 [&](const auto& person) { return isMeant(valueOf(person, "Firstname"), valueOf(person, "Surname")); });
    return results;
}
} // namespace Host
