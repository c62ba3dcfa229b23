#include "ConversationAPI/VoicemailHandler.h"

#include "ConversationAPI/ConversationItemFactory.h"
#include "ConversationAPI/ConversationItemSourceObserverIfc.h"
#include "ConversationAPI/VoicemailConversationItem.h"
#include "Seconds32.h"

#include <algorithm>

namespace ConversationAPI
{
namespace
{
/**
 * Of the items that tell the mailbox's count. Items of one such id replace each other in their conversation, so that
 * counts do not pile up there. Items of the mailbox's calls have none: each stands at its time, whatever the order
 * in which they come.
 */
constexpr const char* ITEM_ID = "voicemail";

constexpr std::int32_t UNKNOWN_COUNT = -1;
constexpr std::int32_t HIGHEST_COUNT = 99; ///< of more, so many are shown
} // namespace

VoicemailHandler::VoicemailHandler(ConversationItemFactory* itemFactory, ActiveCall::TimeFunction clock)
    : itemFactory_(itemFactory), clock_(clock)
{
}

VoicemailHandler::~VoicemailHandler() = default;

void VoicemailHandler::setObserver(ConversationItemSourceObserverIfc* observer)
{
    observer_ = observer;
}

/** The count is compared as reported, not as capped: each report of more than 99 messages is news. */
void VoicemailHandler::setVoiceMailMessagesCount(int count)
{
    const bool isUncounted = count == 0 && messageCount_ == 0;
    if (!isUncounted && (count <= 0 || count == messageCount_))
    {
        return;
    }
    messageCount_ = isUncounted ? UNKNOWN_COUNT : std::min<std::int32_t>(count, HIGHEST_COUNT);
    isMessageWaiting_ = true;
    setTimeStamp();
    publish();
}

void VoicemailHandler::setNoVoiceMailMessageWaiting()
{
    isMessageWaiting_ = false;
    if (messageCount_ != 0)
    {
        messageCount_ = 0;
        setTimeStamp();
        publish();
    }
}

ConversationItem* VoicemailHandler::cachedVoiceMailConversationItem()
{
    return cachedItem_ ? cachedItem_->clone() : nullptr;
}

/** An item made anew is never older than the one before: that may be of a call later than the last count. */
ConversationItem* VoicemailHandler::cachedVoiceMailConversationItem(const std::vector<ConversationItem*>&)
{
    if (hasMailbox() && isOutdated())
    {
        const long timeBefore = cachedItem_ ? cachedItem_->timeStampUTC() : 0;
        keepCountAt(std::max<long>(timeStamp_, timeBefore));
    }
    return cachedVoiceMailConversationItem();
}

ConversationItem* VoicemailHandler::createVoiceMailConversationItem(const std::string& timeAndDate)
{
    if (!itemFactory_)
    {
        return nullptr;
    }
    keep(itemFactory_->getVoicemailConversationItem(timeAndDate));
    return cachedVoiceMailConversationItem();
}

void VoicemailHandler::setTimeStamp()
{
    std::time_t now = 0;
    clock_(&now);
    timeStamp_ = saturatedTo32Bits(now);
}

void VoicemailHandler::publish()
{
    if (!observer_ || !hasMailbox())
    {
        return;
    }
    keepCountAt(timeStamp_);
    if (ConversationItem* copy = cachedVoiceMailConversationItem())
    {
        observer_->newConversationItem(copy);
    }
}

void VoicemailHandler::keepCountAt(long time)
{
    keep(itemFactory_->getVoicemailConversationItem(time));
    cachedItem_->setConversationItemId(ITEM_ID);
}

void VoicemailHandler::keep(ConversationItem* item)
{
    cachedItem_.reset(item);
    auto* voicemail = static_cast<VoicemailConversationItem*>(item);
    voicemail->setNumberOfVoiceMessages(messageCount_);
    voicemail->setVoiceMailMessageWaiting(isMessageWaiting_);
}

bool VoicemailHandler::hasMailbox() const
{
    return itemFactory_ && itemFactory_->voiceMailNumberIsConfigured();
}

bool VoicemailHandler::isOutdated() const
{
    if (!cachedItem_)
    {
        return isMessageWaiting_;
    }
    const ConversationItem::Participants& parties = cachedItem_->participants();
    const bool isOfOtherNumber = !parties.empty() && parties.front().numberText() != itemFactory_->getVoiceMailNumber();
    return isOfOtherNumber || cachedItem_->numberOfNewEvents() != messageCount_;
}
} // namespace ConversationAPI
