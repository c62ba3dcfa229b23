#include "ConversationAPI/ActiveCallMatcherIgnoringCallID.h"
#include "ConversationAPI/CallIDCondition.h"
#include "ConversationAPI/ConversationIDCondition.h"
#include "ConversationAPI/ConversationItemMatcher.h"
#include "ConversationAPI/ConversationList.h"
#include "ConversationAPI/ConversationModificationObserverIfc.h"
#include "ConversationAPI/HasAnyNumberMatchingAndIsDirectType.h"
#include "ConversationAPI/HasConversationAnyNumberMatchingCondition.h"
#include "ConversationAPI/HoldsCallCondition.h"
#include "ConversationAPI/IsSameConversationAsAndDirectCondition.h"
#include "ConversationAPI/PhantomCondition.h"
#include "ConversationAPI/UserIdMatchesAndIsDirectType.h"
#include "support/Phone.h"

#include <map>
#include <random>

namespace
{
using namespace ConversationAPI;
using namespace ConversationListConditions;
using Owned = std::unique_ptr<Conversation>;
using Condition = std::unique_ptr<ConversationUnaryCondition>;

const std::vector<std::string> NUMBERS = {"", "11", "12", "13", "14", "030 1234567", "+49301234567"};
const std::vector<std::string> NAMES = {"", "Lee", "Fox", "Caller.Unknown.XXX", "CTI Assisted"};
const std::vector<std::string> CALL_IDS = {"", "1", "2", "3", "GPU"};
const std::vector<std::string> EXCHANGE_IDS = {"", "", "", "x", "y"};
constexpr int CALL_STATES = 17;

/** Whose the numbers are, kept at once and in the plainest way. */
struct Claims : ConversationModificationObserverIfc
{
    void conversationRegistered(Conversation* conversation) override
    {
        for (const std::string& number : conversation->getConversationNumbers())
        {
            owners[number] = conversation;
        }
    }
    void conversationUnregistered(Conversation* conversation) override
    {
        for (auto claim = owners.begin(); claim != owners.end();)
        {
            claim = claim->second == conversation ? owners.erase(claim) : std::next(claim);
        }
    }
    void conversationNumberUpdated(numberUpdateReason, Conversation* conversation, std::string now,
                                   std::string before) override
    {
        owners.erase(before);
        owners[now] = conversation;
    }
    void conversationModified(const std::string&) override {}
    void conversationKeysChanged(Conversation*) override {}

    Conversation* ofNumber(const std::string& number) const
    {
        const auto claim = owners.find(number);
        const bool isNobodys = number.empty() || claim == owners.end() || claim->second->isGroupCall();
        return isNobodys ? nullptr : claim->second;
    }

    std::map<std::string, Conversation*> owners;
};

/** A list of few parties with much going on, and conversations that left it. */
class ListIndexTest : public testing::TestWithParam<unsigned>
{
  protected:
    ListIndexTest() : random_(GetParam())
    {
        for (const char* number : {"11", "12", "+49301234567", ""})
        {
            for (const char* exchangeId : {"", "x"})
            {
                probes_.emplace_back(phone.missed(1, number));
                probes_.back()->setExchangeContactId(exchangeId);
            }
            probes_.emplace_back(phone.groupCall(1, number, "g"));
        }
        probes_.emplace_back(phone.missed(1, "13", "", "CTI Assisted"));
        probes_.emplace_back(phone.missed(1, "13", "", "Caller.Unknown.XXX"));
        for (const std::string& callId : CALL_IDS)
        {
            probes_.emplace_back(phone.live(callId, ActiveCall::CONNECTED, 1, "12"));
            probes_.emplace_back(phone.live(callId, ActiveCall::GROUP_PICKUP_CONNECTED, 1, "14"));
        }
    }

    std::size_t draw(std::size_t below) { return random_() % below; }
    bool chance(std::size_t outOf) { return draw(outOf) == 0; }

    const std::string& pick(const std::vector<std::string>& from) { return from[draw(from.size())]; }

    /** Mostly one of its own, as calls stand in one conversation each. */
    std::string drawCallId() { return chance(3) ? pick(CALL_IDS) : std::to_string(++lastCall_); }

    ConversationItem* drawItem()
    {
        const long time = static_cast<long>(draw(20));
        ConversationItem* item = nullptr;
        switch (draw(4))
        {
        case 0:
            item = phone.groupCall(time, pick(NUMBERS), "g");
            break;
        case 1:
            item = phone.live(drawCallId(), static_cast<ActiveCall::activeCallState>(draw(CALL_STATES)), time,
                              pick(NUMBERS), pick(NAMES));
            break;
        default:
            item = phone.missed(time, pick(NUMBERS), "", pick(NAMES), std::to_string(draw(40)));
            item->setPhoneNumbers(chance(4) ? pick(NUMBERS) : "", "", chance(4) ? pick(NUMBERS) : "", "");
        }
        item->setConversationItemId(chance(8) ? pick(CALL_IDS) : "");
        return item;
    }

    Conversation* drawInside()
    {
        return list.empty() ? nullptr : list.atIndex(static_cast<unsigned>(draw(list.size())));
    }

    /** One that left earlier or a new one; the caller owns it. */
    Conversation* drawOutside()
    {
        if (!outside_.empty() && chance(2))
        {
            std::swap(outside_[draw(outside_.size())], outside_.back());
            Conversation* drawn = outside_.back().release();
            outside_.pop_back();
            return drawn;
        }
        Conversation* made = chance(4) ? phone.contact(pick(NAMES), pick(NUMBERS), pick(NUMBERS)).release()
                                       : phone.conversation({drawItem()}).release();
        made->setExchangeContactId(pick(EXCHANGE_IDS));
        return made;
    }

    void keepOutside(const std::vector<Conversation*>& left)
    {
        for (Conversation* one : left)
        {
            one->removeObserver(&claims_);
            outside_.emplace_back(one);
        }
        while (outside_.size() > 6)
        {
            outside_.erase(outside_.begin());
        }
    }

    Condition drawCondition()
    {
        std::vector<Condition> all = conditions();
        return std::move(all[draw(all.size())]);
    }

    /** Every kind of question with every answer that it may have here. */
    std::vector<Condition> conditions()
    {
        std::vector<Condition> all;
        for (const std::string& number : NUMBERS)
        {
            all.push_back(std::make_unique<HasConversationAnyNumberMatchingCondition>(number));
            all.push_back(std::make_unique<HasAnyNumberMatchingAndIsDirectType>(number));
        }
        for (const std::string& callId : CALL_IDS)
        {
            all.push_back(std::make_unique<CallIDCondition>(callId));
            all.push_back(std::make_unique<HoldsCallCondition>(callId));
            all.push_back(std::make_unique<UserIdMatchesAndIsDirectType>(callId));
        }
        for (const std::string& id : {std::string(), std::string("PhantomConversation"), someId_})
        {
            all.push_back(std::make_unique<ConversationIDCondition>(id));
        }
        for (const auto& probe : probes_)
        {
            probe->setConversationId(chance(4) ? someId_ : "");
            all.push_back(std::make_unique<ConversationItemMatcher>(probe.get()));
            all.push_back(std::make_unique<IsSameConversationAsAndDirectCondition>(probe.get()));
            all.push_back(std::make_unique<ActiveCallMatcherIgnoringCallID>(probe.get()));
        }
        if (Conversation* phantom = list.getPhantomConversation())
        {
            all.push_back(std::make_unique<PhantomCondition>(phantom));
        }
        return all;
    }

    void changeList()
    {
        Conversation* inside = drawInside();
        const auto index = static_cast<unsigned>(draw(list.size() + 1));
        const std::vector<std::function<void()>> changes = {
            [&] { enter(drawOutside()); },
            [&] { enter(drawOutside()); },
            [&] { enter(drawOutside()); },
            [&] { list.push_front(inside); },
            [&] { list.removeConversationAndDelete(index); },
            [&] { list.reserve(index); },
            [&] { list.moveConversationToTop(index); },
            [&] { list.moveConversationToTop(index); },
            [&]
            {
                list.remove(inside);
                EXPECT_FALSE(list.contains(inside));
            },
            [&] { list.pop(inside), keepOutside({inside}); },
            [&] { list.erase(chance(2) ? inside : Owned(inside->clone()).get()); },
            [&] { removeMatching(*drawCondition()); },
            [&] { list.findAndDeleteConversationsThatMatch(*drawCondition()); },
            [&] { list.sortAlphabetically(); },
            [&] { chance(4) ? fillAnew() : list.clearPhantomConversation(); }};
        changes[draw(inside == nullptr || chance(2) ? 3 : changes.size())]();
        for (Conversation* one : list)
        {
            claimIfObserved(*one);
        }
    }

    void enter(Conversation* conversation)
    {
        const std::size_t before = list.size();
        if (before > 25)
        {
            return keepOutside({conversation});
        }
        if (chance(5))
        {
            conversation->setPhantom(true);
            list.push_back_phantom(conversation);
        }
        chance(2) ? list.push_front(conversation) : list.push_back(conversation);
        if (list.size() == before)
        {
            return keepOutside({conversation});
        }
        claimIfObserved(*conversation);
    }

    void removeMatching(const ConversationUnaryCondition& condition)
    {
        std::vector<Conversation*> leaving;
        std::copy_if(list.begin(), list.end(), std::back_inserter(leaving),
                     [&](Conversation* one) { return condition(one); });
        if (leaving.size() > 4)
        {
            return;
        }
        list.findAndRemoveConversationsThatMatch(condition);
        keepOutside(leaving);
    }

    void fillAnew()
    {
        const std::vector<Conversation*> all(list.begin(), list.end());
        if (chance(2))
        {
            list.removeAndDeleteAll();
        }
        else
        {
            list.clear();
            keepOutside(all);
        }
        for (std::size_t left = draw(12); left > 0; --left)
        {
            enter(drawOutside());
        }
    }

    void changeConversation(Conversation& one)
    {
        const auto type = static_cast<CallPartyIdentifier::PhoneNumberIconType>(draw(5));
        const auto number = [this] { return pick(NUMBERS); };
        const std::vector<std::function<void()>> changes = {
            [&] { one.updateContactNumber(type, number()); },
            [&] { one.setPhoneNumbers(number(), number(), number(), number(), number(), type); },
            [&] { one.updateNumber(number(), type); },
            [&] { chance(2) ? one.addObserver(&list) : leave(one); },
            [&] { one.saveHomeNumber(number()); },
            [&] { one.saveLastName(pick(NAMES)); },
            [&] { one.setExchangeContactId(pick(EXCHANGE_IDS)); },
            [&] { one.setPhantom(chance(3)); },
            [&] { one.setExtraActiveConversation(chance(3)); },
            [&] { one.setType(chance(3) ? Conversation::GROUP : Conversation::DIRECT); },
            [&] { one.setUserId(pick(CALL_IDS)); },
            [&] { one.removeItem(pick(CALL_IDS)); },
            [&] { one.removeAndDeleteFrontItem(); },
            [&] {
                one.setConversationItems({drawItem(), drawItem()});
            },
            [&] { one.updateInitialItem(drawItem()); },
            [&] { one.updateItem(drawItem()); },
            [&] {
                one.mergeItems({drawItem(), drawItem()});
            },
            [&] { mergeInto(one); },
            [&] { mergeInto(one); },
            [&] { one.append(drawItem()); },
            [&] { one.append(drawItem()); }};
        changes[draw(changes.size())]();
        claimIfObserved(one);
    }

    void claimIfObserved(Conversation& one)
    {
        if (one.isObservedBy(&list))
        {
            one.addObserver(&claims_);
        }
    }

    /** A list may be sent away; the conversation stays in it. */
    void leave(Conversation& one)
    {
        one.removeObserver(&list);
        one.removeObserver(&claims_);
    }

    void mergeInto(Conversation& one)
    {
        const Owned other(chance(2) ? drawOutside() : drawInside()->clone());
        if (chance(3))
        {
            one.cloneContactInfo(*other);
            return;
        }
        Testing::deleteAll(chance(2) ? one.mergeWith(*other) : one.foldIn(*other, {chance(2), chance(2), false}));
    }

    void expectIndexesAsWalked()
    {
        for (const Condition& condition : conditions())
        {
            const auto walked = std::find_if(list.begin(), list.end(), [&](auto* one) { return (*condition)(one); });
            const auto found = list.findWithIndex(*condition);
            ASSERT_EQ(found.second, static_cast<unsigned>(walked - list.begin())) << typeid(*condition).name();
            ASSERT_EQ(found.first, walked == list.end() ? nullptr : *walked);
            ASSERT_EQ(list.indexOf(found.first), found.second);
        }
        for (Conversation* remembered : {list.getAnonymousConversation(), list.getPhantomConversation()})
        {
            ASSERT_TRUE(remembered == nullptr || isInside(remembered));
        }
        ASSERT_LE(list.getModifiedConversations().size(), 50U);
    }

    /** Asked rarely, as the list brings what it knows of numbers up to date only then. */
    void expectNumbersAsClaimed()
    {
        for (const std::string& number : NUMBERS)
        {
            ASSERT_EQ(list.findByNumber(number), claims_.ofNumber(number)) << number;
        }
        Conversation* known = list.findByConversationId(someId_);
        ASSERT_TRUE(known == nullptr || isInside(known));
    }

    /** However few conversations a sort has to move, it gives what sorting all of them for the first time gives. */
    void sortAsIfForTheFirstTime()
    {
        ConversationList fresh;
        for (auto one = list.end(); one != list.begin();)
        {
            fresh.push_front(*--one);
        }
        fresh.sort();
        const std::vector<Conversation*> expected(fresh.begin(), fresh.end());
        fresh.clear();
        list.sort();
        if (isWeaklyOrdered())
        {
            ASSERT_EQ(std::vector<Conversation*>(list.begin(), list.end()), expected);
        }
        else
        {
            list.sortAlphabetically(); // so that the next time all of them are sorted, too
        }
    }

    /** Rows of one call or of several remote ones can contradict each other: then more than one sequence is right. */
    bool isWeaklyOrdered() const
    {
        const auto haveNothingBetween = [this](const Conversation* a, const Conversation* b)
        { return std::all_of(list.begin(), list.end(), [=](const auto* c) { return *a < *c || *c < *b; }); };
        return std::all_of(list.begin(), list.end(),
                           [&](const auto* a)
                           {
                               return std::all_of(list.begin(), list.end(),
                                                  [&](const auto* b)
                                                  { return !(*a < *b) || (!(*b < *a) && haveNothingBetween(a, b)); });
                           });
    }

    bool isInside(Conversation* one) const { return std::find(list.begin(), list.end(), one) != list.end(); }

    Testing::Phone phone;
    int lastCall_ = 3;
    Claims claims_;
    std::vector<Owned> outside_;
    ConversationList list;
    std::vector<std::unique_ptr<ConversationItem>> probes_;
    std::string someId_;
    std::mt19937 random_;
};

TEST_P(ListIndexTest, AnswersAreThoseOfAWalkWhateverHappened)
{
    for (int step = 0; step < 1500; ++step)
    {
        Conversation* inside = drawInside();
        if (inside == nullptr || chance(3))
        {
            changeList();
        }
        else
        {
            changeConversation(*inside);
        }
        if (chance(3))
        {
            ASSERT_NO_FATAL_FAILURE(sortAsIfForTheFirstTime()) << "step " << step;
        }
        if (Conversation* some = drawInside())
        {
            someId_ = some->getConversationId();
        }
        if (chance(3)) // much may gather before the list is asked
        {
            ASSERT_NO_FATAL_FAILURE(expectIndexesAsWalked()) << "step " << step;
        }
        if (chance(12))
        {
            ASSERT_NO_FATAL_FAILURE(expectNumbersAsClaimed()) << "step " << step;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, ListIndexTest, testing::Values(1U, 2U, 3U, 4U));
} // namespace
