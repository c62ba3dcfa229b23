/**
 * Searches the web-service directory.
 *
 * What is found goes to a conversation observer, which makes conversations of it and reports their ids to whoever
 * searches. Web service and observer are not owned. The service answers while it is asked. UI thread only.
 */
#pragma once

#include "ConversationAPI/SearchableConversationSourceIfc.h"
#include "platform/WSIServiceIfc.h"

#include <string>
#include <vector>

namespace ConversationAPI
{
class WSIConversationSearchInterface : public SearchableConversationSourceIfc
{
  public:
    explicit WSIConversationSearchInterface(WSIServiceConversationObserverIfc* conversationObserver);
    ~WSIConversationSearchInterface() override;

    /** The web service from now on, null for none: then nothing is found. */
    void addWSISource(WSIServiceIfc* service);

    /** Nothing is known before the service was asked. */
    std::vector<std::string> getMatchingConversationIds(std::string) override { return {}; }

    /**
     * Hands what is found to the conversation observer, which knows the search and its observer; the end is reported
     * by whoever else searches under this id. An empty text finds nothing.
     */
    void getMatchingConversationIds(const std::string& searchString, const std::string& searchId,
                                    ConversationSearchObserverIfc* observer) override;

    /** The service has answered already. */
    void cancelSearch(const std::string&) override {}
    unsigned getSourceTypeWithPriority() const override { return 3; }

    /** Appends the entries of the system phonebook that begin with these three or more digits; false on failure. */
    bool searchSystemPhonebook(const std::string& searchString, std::vector<WSIItem>& results);

  private:
    WSIServiceConversationObserverIfc* conversationObserver_;
    WSIServiceIfc* service_ = nullptr;
};

/** Whether the text holds nothing but "0123456789"; "" does. */
bool checkSearchStringContainsOnlyNumbers(const std::string& searchString);
} // namespace ConversationAPI
