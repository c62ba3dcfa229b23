/**
 * The call logs and directories that the network service keeps for the user, as items and as conversations.
 *
 * The service tells them as text lines, always all of them. The source reads them itself when it begins; that they
 * changed the application hears from the service and passes on. The source keeps the lines, makes the items from them
 * when somebody asks, and owns one conversation for each line. What is shown of those is a second list, a view that
 * owns nothing: getConversations(). A line that cannot be understood is logged and left out.
 *
 * Service, factories and observers are not owned; the application destroys the observers after taking them off.
 * Copies of the conversations must not outlive the source, which knows their identifiers. Called on the UI thread;
 * the lock guards the lists while they change, and observers are told after it was left.
 */
#pragma once

#include "ConversationAPI/ConversationItemSourceIfc.h"
#include "ConversationAPI/ConversationSourceIfc.h"
#include "ConversationAPI/NotificationRound.h"
#include "platform/Semaphore.h"

#include <memory>
#include <string>
#include <vector>

class BroadsoftServiceIfc;

namespace ConversationAPI
{
class CallLogConversations;
class ConversationFactory;
class ConversationItemFactory;
class PresetIDGenerator;

class BroadsoftServiceConversationItemSource : public ConversationItemSourceIfc, public ConversationSourceIfc
{
  public:
    /** Without a service there is nothing to read or delete, but changes are still taken in. */
    BroadsoftServiceConversationItemSource(BroadsoftServiceIfc* service, ConversationItemFactory* itemFactory,
                                           ConversationFactory* conversationFactory);
    ~BroadsoftServiceConversationItemSource() override;

    BroadsoftServiceConversationItemSource(const BroadsoftServiceConversationItemSource&) = delete;
    BroadsoftServiceConversationItemSource& operator=(const BroadsoftServiceConversationItemSource&) = delete;

    /** New items for all lines, directory entries included, without conversation ids; none in most show states. */
    std::vector<ConversationItem*> getConversationItems() override;

    /** The service deletes single entries only, see deleteConversation(); these do nothing. */
    void reloadCalls(const std::vector<std::string>& journalEntryIds) override;
    void deleteAllCalls() override;
    void deleteCalls(const std::vector<std::string>& journalEntryIds) override;
    void setObserver(ConversationItemSourceObserverIfc* observer) override;
    void clearObserver() override;
    int getItemSourceType() override;

    /** The service keeps no marks of what was seen: always false. */
    bool ageAllMissedCalls(const std::vector<std::string>& journalEntryIds) override;

    /**
     * Reads what the service has by now and reports as ready and subscribed; without a service it never does. The
     * service takes no observers: to call broadsoftCallLogChanged() with what changes later is the application's task.
     */
    virtual void init();

    /**
     * The service's log is another one now: `entries` holds all its lines. The directories in which it differs, each
     * as "directory:count", are only logged.
     */
    virtual void broadsoftCallLogChanged(std::vector<std::string> updatedDirectories, std::vector<std::string> entries);

    /** The name under which the application subscribes to the service for this source. */
    virtual std::string getSubscribingService();

    /** Does nothing; the items stay the caller's. */
    virtual void deleteItems(std::vector<ConversationItem*> items);

    /** The display shows something else: 0 or 6 the call history, 6 without a list of the network's own. */
    virtual void showStateChanged(int state);

    /** Shows "CvuDispIF.Missed", "CvuDispIF.Received" or "CvuDispIF.Dialled" calls only, or with any other text all. */
    virtual void bwCallLogFilterChanged(std::string filter);

    /** The conversations that are shown. */
    ConversationList* getConversations() const override;

    /** Whether it is shown or not. */
    Conversation* getConversation(const std::string& conversationId) override;
    void addObserver(ConversationSourceObserverIfc* observer) override;
    void removeObserver(ConversationSourceObserverIfc* observer) override;

    /** Always null: the log knows no users. */
    Conversation* getConversationForUser(const std::string& user) override;

    /** Of all conversations, shown or not. */
    std::vector<std::string> getInUseConversationIds() override;
    void clearSearchResults() override;
    void voiceMailChanged(const std::string& oldNumber, const std::string& newNumber) override;

    /** Asks the service to delete the entry, shown or not; the conversation goes when the service tells of it. */
    void deleteConversation(const std::string& conversationId) override;
    void deleteConversations() override;

    /** Puts what is shown in order: 0 by time, 1 by name; anything else leaves it. The next change undoes it. */
    virtual void sortBroadsoftCallLogs(int order);
    int getSourceType() override;
    void conversationUpdated(Conversation* conversation) override;
    void markAllMissedCallsRead() override;

    /**
     * The item of one line, which the caller owns; null, and a line in the log, for a line that cannot be understood.
     * With `giveConversationId` it belongs to a conversation of its own, under an id that no other item ever has.
     */
    virtual ConversationItem* stringToConversationItem(const std::string& entry, bool giveConversationId);

    /** The conversation of one line, which the caller owns; null as above. */
    virtual Conversation* stringToConversation(const std::string& entry);

  private:
    void takeEntries(std::vector<std::string> entries);
    void filterContent();
    void notifyObserversConversationsChanged();

    BroadsoftServiceIfc* service_;
    ConversationItemFactory* itemFactory_;
    ConversationFactory* conversationFactory_;
    const std::unique_ptr<PresetIDGenerator> idGenerator_; ///< outlives the conversations
    NotificationRound round_; ///< keeps what goes while observers are told, who may read it
    const std::unique_ptr<CallLogConversations> conversations_;
    std::vector<std::string> entries_; ///< those that are understood
    std::string filter_;
    int showState_ = 0;
    Semaphore lock_{1, 1, false};
    ConversationItemSourceObserverIfc* itemObserver_ = nullptr;
    std::vector<ConversationSourceObserverIfc*> observers_;
};
} // namespace ConversationAPI
