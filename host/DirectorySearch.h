/**
 * A search for people in directories, local ones and others.
 *
 * Each search has results any number of times and then exactly one end, also when it is cancelled or fails; all are
 * told from the event loop, never while an operation is being called. The observer is not owned; it may start and
 * cancel searches, take itself off and destroy the search object while it is told something. UI thread only.
 */
#pragma once

#include "platform/DirectoryServiceIfc.h"

#include <string>

namespace Host
{
class DirectorySearchObserver
{
  public:
    virtual ~DirectorySearchObserver() = default;

    /** Further entries: those told before stay valid. */
    virtual void searchResults(const std::string& searchId, const PhonebookSearchResults& results) = 0;
    virtual void searchEnded(const std::string& searchId) = 0;
};

class DirectorySearch
{
  public:
    virtual ~DirectorySearch() = default;

    /** Null for nobody. Whoever is taken off is told nothing any more. */
    virtual void setObserver(DirectorySearchObserver* observer) = 0;

    /** A search that still goes on under this id is cancelled first, and its end told before the new one's results. */
    virtual void search(const std::string& searchId, const std::string& text) = 0;

    /** No more results are told, only the end. Does nothing for a search that has ended. */
    virtual void cancel(const std::string& searchId) = 0;
};
} // namespace Host
