#include "ConversationAPI/VoicemailHandler.h"
#include "ConversationAPI/ConversationItemSourceObserverIfc.h"
#include "ConversationAPI/VoicemailConversationItem.h"
#include "support/Phone.h"

namespace
{
using namespace ConversationAPI;

/** Count, waiting flag and number of an item, which it deletes; "-" for none. */
std::string take(ConversationItem* item)
{
    const std::unique_ptr<ConversationItem> owned(item);
    auto* voicemail = dynamic_cast<VoicemailConversationItem*>(item);
    return voicemail ? std::to_string(voicemail->numberOfNewEvents()) +
                           (voicemail->isVoiceMailMessageWaiting() ? " waiting " : " none ") +
                           voicemail->participants().front().numberText()
                     : "-";
}

struct Mailbox : testing::Test, ConversationItemSourceObserverIfc
{
    void conversationItemsChanged() override {}
    void conversationItemChanged(ConversationItem*) override {}
    bool removeActiveConversationItemForCall(const std::string&) override { return false; }
    void sourceSubscribed() override {}
    void newConversationItem(ConversationItem* item) override
    {
        EXPECT_EQ(item->timeStampUTC(), now);
        EXPECT_EQ(item->conversationItemId(), "voicemail");
        told = take(item);
    }

    static std::time_t clock(std::time_t* seconds) { return *seconds = now; }

    inline static std::time_t now = 1000;
    Testing::Phone phone;
    VoicemailHandler handler{&phone.items, &clock};
    std::string told;
};

TEST_F(Mailbox, IsToldAndRemadeWhenSomethingChanged)
{
    const auto count = [this](int n) { return [this, n] { handler.setVoiceMailMessagesCount(n); }; };
    const auto number = [this](const char* to) { return [this, to] { phone.items.setVoiceMailNumber(to); }; };
    const auto none = [this] { handler.setNoVoiceMailMessageWaiting(); };
    const auto observer = [this](auto* to) { return [this, to] { handler.setObserver(to); }; };
    const struct
    {
        std::function<void()> act;
        std::string told, rebuilt; ///< "" for nothing told
    } steps[] = {
        {count(4), "", "-"}, // nobody listens, and there is no mailbox
        {number("900"), "", "4 waiting 900"},
        {none, "", "0 none 900"},
        {observer(this), "", "0 none 900"},
        {count(0), "-1 waiting 900", "-1 waiting 900"},
        {count(0), "", "-1 waiting 900"},
        {count(3), "3 waiting 900", "3 waiting 900"},
        {count(3), "", "3 waiting 900"},
        {count(0), "", "3 waiting 900"},
        {count(150), "99 waiting 900", "99 waiting 900"},
        {count(150), "99 waiting 900", "99 waiting 900"},
        {count(99), "", "99 waiting 900"},
        {number("901"), "", "99 waiting 901"},
        {number(""), "", "99 waiting 901"},
        {none, "", "99 waiting 901"},
        {number("902"), "", "0 none 902"},
        {count(-5), "", "0 none 902"},
        {count(5), "5 waiting 902", "5 waiting 902"},
        {none, "0 none 902", "0 none 902"},
        {none, "", "0 none 902"},
    };
    std::string cached = "-";
    for (const auto& step : steps)
    {
        ++now;
        told.clear();
        step.act();
        EXPECT_EQ(told, step.told) << &step - steps;
        EXPECT_EQ(take(handler.cachedVoiceMailConversationItem()), told.empty() ? cached : told) << &step - steps;
        EXPECT_EQ(cached = take(handler.cachedVoiceMailConversationItem({})), step.rebuilt) << &step - steps;
    }
}

TEST_F(Mailbox, ACallOfTheMailboxIsKeptAndItsTimeOutlivesAnotherNumber)
{
    phone.items.setVoiceMailNumber("900");
    handler.setVoiceMailMessagesCount(2);
    EXPECT_EQ(take(handler.createVoiceMailConversationItem("2035-04-01T10:00:00Z")), "2 waiting 900");
    for (const char* mailbox : {"900", "901"})
    {
        phone.items.setVoiceMailNumber(mailbox);
        const std::unique_ptr<ConversationItem> again(handler.cachedVoiceMailConversationItem({}));
        EXPECT_EQ(again->timeStampUTC(), 2059034400);
        EXPECT_EQ(again->conversationItemId(), mailbox == std::string("900") ? "" : "voicemail");
    }
    EXPECT_EQ(VoicemailHandler(nullptr).createVoiceMailConversationItem(""), nullptr);
}
} // namespace
