/**
 * The displays that an aggregator tells of its list.
 *
 * Observers are told in the order in which they were added; one that is added twice is told twice. They may call
 * back: of a row that is not listed any more nobody is told, and where a row stands is looked up for each observer
 * anew. When a row changes while another one is being told of, the observers hear of the two in different orders,
 * and none of them may be right: at the end they are told the whole list. List and round are not owned and outlive this
 * object, observers are not owned either.
 */
#pragma once

#include <set>
#include <vector>

namespace ConversationAPI
{
class Conversation;
class ConversationList;
class ConversationObserver;
class NotificationRound;

class DisplayObservers
{
  public:
    DisplayObservers(ConversationList& list, NotificationRound& round) : list_(list), round_(round) {}

    /** Null is nobody. */
    void add(ConversationObserver* observer);

    /** Takes out one occurrence. */
    void remove(ConversationObserver* observer);

    void listChanged();
    void presenceUpdated(Conversation* row);
    void created(Conversation* row);

    /** Where the row stands now; null is no row. */
    void updatedAndMoved(Conversation* row);
    void updatedAndMoved(Conversation* row, unsigned index);
    void deleted(Conversation* row);

  private:
    template <typename Notification>
    void tellOf(Conversation* row, Notification notification);

    ConversationList& list_;
    NotificationRound& round_;
    std::vector<ConversationObserver*> observers_;
    std::set<Conversation*> leaving_; ///< of which the observers are being told that they go
    bool isTellingOfRow_ = false;
};
} // namespace ConversationAPI
