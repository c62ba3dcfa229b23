/**
 * The notifications that are going on, and what has to wait for their end.
 *
 * Observers may change an aggregator while it tells them something. What they make it drop lives on until the
 * outermost notification is over, since somebody may still be told of it, and a rebuild that they ask for runs
 * then, once. UI thread only.
 */
#pragma once

#include <functional>
#include <memory>
#include <vector>

namespace ConversationAPI
{
class Conversation;
class ConversationList;

class NotificationRound
{
  public:
    /** `rebuild` rebuilds and, when asked to, tells the observers; `tellList` only tells them the list as it is. */
    explicit NotificationRound(
        std::function<void(bool tellObservers)> rebuild, std::function<void()> tellList = [] {});
    ~NotificationRound();

    NotificationRound(const NotificationRound&) = delete;
    NotificationRound& operator=(const NotificationRound&) = delete;

    /** A notification, as long as the scope lasts. Must not end while a lock that a rebuild takes is held. */
    class Scope
    {
      public:
        explicit Scope(NotificationRound& round);
        ~Scope();

        Scope(const Scope&) = delete;
        Scope& operator=(const Scope&) = delete;

      private:
        NotificationRound& round_;
    };

    /** Whether somebody is being told something. */
    bool isGoingOn() const { return depth_ != 0; }

    /** Rebuilds at once when nobody is being told anything, else at the end. */
    void rebuild(bool tellObservers);

    /** At the end, the observers are told the list, unless a rebuild does so anyway. */
    void tellListAtEnd() { isListAsked_ = true; }

    /** Deletes the conversation, which is in no list any more, as soon as nobody is being told anything. */
    void retire(Conversation* conversation);

    /** Takes the conversation off the list and retires it; nothing when it is not in the list, be it null. */
    void retireFrom(ConversationList& list, Conversation* conversation);

  private:
    void finish();

    std::function<void(bool)> rebuild_;
    std::function<void()> tellList_;
    int depth_ = 0;
    bool isListAsked_ = false;
    bool isRebuildAsked_ = false;
    bool areObserversToBeTold_ = false;
    std::vector<std::unique_ptr<Conversation>> retired_;
};
} // namespace ConversationAPI
