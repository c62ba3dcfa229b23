/**
 * The conversations of the cloud service as a source: direct and group conversations with texts and system
 * messages, their users' presence, the meetings that one can dial into.
 *
 * It owns its conversations, whose ids are the cloud's own. The cloud service reports every change by one of the
 * operations below; what they are given stays the service's and is read before anybody is told. Service, factories
 * and observers are not owned. The source outlives every copy of its conversations: it has their identifier
 * generators. What is null or unknown is logged and changes nothing.
 *
 * Observers may call back: what they have removed lives until the outermost notification is over, and loading that
 * they ask for is done then. UI thread only.
 */
#pragma once

#include "ConversationAPI/ContactStorageIfc.h"
#include "ConversationAPI/Conversation.h"
#include "ConversationAPI/ConversationSourceIfc.h"
#include "ConversationAPI/NotificationRound.h"
#include "ConversationAPI/SearchableConversationSourceIfc.h"
#include "ConversationAPI/UserInfoSupplier.h"
#include "platform/Quorvel.h"

#include <memory>
#include <string>
#include <vector>

namespace ConversationAPI
{
class ConversationFactory;
class ConversationItemFactory;
class QuorvelConversationBuilder;
class QuorvelServiceObserverIfc;
class QuorvelUsers;

class QuorvelServiceConversationSource : public ConversationSourceIfc,
                                         public UserInfoSupplier,
                                         public SearchableConversationSourceIfc,
                                         public ContactStorageIfc
{
  public:
    /** Without service observer nobody is told of log-in and log-out. */
    QuorvelServiceConversationSource(ConversationItemFactory* itemFactory, ConversationFactory* conversationFactory,
                                     QuorvelServiceObserverIfc* serviceObserver);
    ~QuorvelServiceConversationSource() override;

    QuorvelServiceConversationSource(const QuorvelServiceConversationSource&) = delete;
    QuorvelServiceConversationSource& operator=(const QuorvelServiceConversationSource&) = delete;

    ConversationList* getConversations() const override { return conversations_.get(); }
    Conversation* getConversation(const std::string& id) override;
    void addObserver(ConversationSourceObserverIfc* observer) override;
    void removeObserver(ConversationSourceObserverIfc* observer) override;
    Conversation* getConversationForUser(const std::string& userId) override;
    std::vector<std::string> getInUseConversationIds() override;

    /** A search finds nothing but the conversations that are there anyway. */
    void clearSearchResults() override {}

    /** The cloud has no mailbox. */
    void voiceMailChanged(const std::string&, const std::string&) override {}

    /** Only here: the cloud keeps the conversation, and brings it back with its next message or when loading. */
    void deleteConversation(const std::string& id) override;
    void deleteConversations() override;
    int getSourceType() override { return 3; }

    /** Contacts group no messages. */
    void conversationUpdated(Conversation*) override {}

    /** The cloud has no missed calls. */
    void markAllMissedCallsRead() override {}

    std::string displayName() const override { return displayName_; }
    std::string getUserId() const override { return userId_; }

    /** In the order of the list. An empty text finds all. */
    std::vector<std::string> getMatchingConversationIds(std::string searchString) override;

    /** Everything that can be found is here already: answers and ends at once. An empty text finds nothing. */
    void getMatchingConversationIds(const std::string& searchString, const std::string& searchId,
                                    ConversationSearchObserverIfc* observer) override;
    void cancelSearch(const std::string&) override {}
    void setMyUserInfoObserver(UserInfoObserverIfc* observer) override { userInfoObserver_ = observer; }

    /** The cloud takes no contacts. */
    bool canStoreContact() const override { return false; }
    void saveContact(Conversation*) override {}
    unsigned getSourceTypeWithPriority() const override { return 4; }

    /** Null for none any more; the conversations stay as they are until they are loaded. */
    void setQuorvelService(Quorvel::ServiceIfc* service);

    void loggedIn();

    /** The cloud's conversations and the user's name are gone. */
    void loggedOut();

    /** The service's conversations, in its order, take the place of all there were. */
    void loadConversations();
    void conversationsUpdatedForLoggedin();

    /** Asks the service who is signed in. */
    void fetchMyUserData();

    /**
     * Both take in what the service tells of the conversation, whether it is known or not. One that is of another kind
     * now, or with somebody else, is made anew: that is told as a change of the whole list.
     */
    void newConversation(const Quorvel::ConversationIfc* conversation);
    void updatedConversation(const Quorvel::ConversationIfc* conversation);

    /**
     * Both replace the item of this id or add it; an unknown conversation is asked of the service. Like all items, two
     * messages of one second count as the same: the one that is taken in last is shown.
     */
    void newConversationItem(const Quorvel::ConversationItemIfc* item);
    void updatedConversationItem(const Quorvel::ConversationItemIfc* item);

    /** Names or picture of a user are others now: wherever he is shown, in notices that affect him, too. */
    void updatedUser(const Quorvel::UserIfc* user);
    void userPresenceChanged(const std::string& userId, Quorvel::PresenceState state);

    /** A meeting began, ended or has other ways to dial in; an event without join details leaves those. */
    void processRTCSessionEvent(const Quorvel::RTCSessionEventIfc* event);

  private:
    void rebuild(bool tellObservers);
    // NOLINTNEXTLINE(readability-identifier-naming): known by this name
    void CreateConversationsFromQuorvelConversations(const std::vector<const Quorvel::ConversationIfc*>& conversations);
    Conversation* takeIn(const Quorvel::ConversationIfc& conversation);
    Conversation* add(const Quorvel::ConversationIfc& conversation);
    const Quorvel::ConversationIfc* askFor(const std::string& conversationId) const;
    Conversation* findOrCreate(const std::string& conversationId);
    Conversation* findConversationForUser(const std::string& userId) const;
    void takeMyUserData(const std::string& userId, const std::string& displayName);
    bool removeConversationWithId(const std::string& id);
    bool removeAllConversations();
    void notifyObserversConversationsChanged();
    void notifyObserversConversationUpdated(Conversation* conversation,
                                            Conversation::UpdateReason reason = Conversation::CONTENT_UPDATED);

    const std::unique_ptr<ConversationList> conversations_;
    const std::unique_ptr<QuorvelUsers> users_;
    const std::unique_ptr<QuorvelConversationBuilder> builder_;
    std::vector<ConversationSourceObserverIfc*> observers_;
    QuorvelServiceObserverIfc* serviceObserver_;
    UserInfoObserverIfc* userInfoObserver_ = nullptr;
    Quorvel::ServiceIfc* service_ = nullptr;
    std::string userId_;
    std::string displayName_;
    std::string loadedForUserId_; ///< whom the loaded conversations do not take for the remote party
    bool readyWasTold_ = false;
    NotificationRound round_;
};
} // namespace ConversationAPI
