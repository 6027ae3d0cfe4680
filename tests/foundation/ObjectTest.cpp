#include <gtest/gtest.h>

#include <regex>
#include <set>
#include <string>

#include <Vision/Foundation.h>

#include "VisionTestSupport.h"

namespace ObjectTesting {

namespace {

using Tavrin::Brnt::CreateObject;
using Tavrin::Vision::ChangedEventShareableBase;

class Counter : public ChangedEventShareableBase {
public:
    static const long long SfValue = ChangedEventShareableBase::sfNextSf_;
    static const long long SfOther = SfValue << 1;

    explicit Counter(ObjectCreateAccessToken const&) {}
    TAVRIN_SHARED_FROM_THIS(Counter)

    void FinalConstruct() { finalConstructSawOwner = static_cast<bool>(weak_from_this().lock()); }
    void Raise(long long bits) { OnChanged_(bits); }

    bool finalConstructSawOwner = false;
};

TEST(CreateObject, RunsFinalConstructOnceOwned) {
    auto counter = CreateObject<Counter>();
    EXPECT_TRUE(counter->finalConstructSawOwner);
    EXPECT_EQ(counter->shared_from_this(), counter);
}

TEST(ChangedEvent, SuspensionGathersBitsIntoOneEventAtLastResume) {
    auto counter = CreateObject<Counter>();
    VisionTest::FlagLog log(*counter);
    counter->SuspendChangedEvent();
    counter->SuspendChangedEvent();
    counter->Raise(Counter::SfValue);
    counter->ResumeAndRaiseChangedEvent();
    counter->Raise(Counter::SfOther);
    EXPECT_TRUE(log.words().empty());
    EXPECT_EQ(counter->ChangedEventSuspended(), 1);

    counter->ResumeAndRaiseChangedEvent();
    EXPECT_EQ(log.words(), VisionTest::Words{Counter::SfValue | Counter::SfOther});

    counter->ResumeAndRaiseChangedEvent();
    EXPECT_EQ(counter->ChangedEventSuspended(), 0);
    EXPECT_EQ(log.words().size(), 1u);
}

TEST(ChangedEvent, BitsRaisedWhileNobodyListensReachAReceiverConnectedBeforeTheResume) {
    auto counter = CreateObject<Counter>();
    counter->Raise(Counter::SfOther);
    counter->SuspendChangedEvent();
    counter->Raise(Counter::SfValue);
    VisionTest::FlagLog log(*counter);
    counter->ResumeAndRaiseChangedEvent();
    EXPECT_EQ(log.words(), VisionTest::Words{Counter::SfValue});
}

TEST(Event, ACopyStartsWithoutTheReceiversOfItsSource) {
    Tavrin::Brnt::Event<> source;
    int calls = 0;
    source.Connect([&calls] { ++calls; });
    Tavrin::Brnt::Event<> copy(source);
    copy.Raise();
    EXPECT_EQ(copy.SlotCount(), 0u);
    EXPECT_EQ(calls, 0);
    copy = source;
    copy.Raise();
    EXPECT_EQ(calls, 0);
}

TEST(Event, DeadReceiverIsSkippedAndItsSlotDropped) {
    Tavrin::Brnt::Event<int, int> event;
    std::vector<int> order;
    struct Sink {
        std::vector<int>* order;
        int tag;
        void On(int, int) { order->push_back(tag); }
    };
    auto first = std::make_shared<Sink>(Sink{&order, 1});
    auto second = std::make_shared<Sink>(Sink{&order, 2});
    event.Connect(first, &Sink::On);
    event.Connect(second, &Sink::On);
    event.Connect([&order](int a, int b) { order.push_back(a + b); });

    event.Raise(1, 2);
    EXPECT_EQ(order, (std::vector<int>{1, 2, 3}));

    first.reset();
    order.clear();
    event.Raise(1, 2);
    EXPECT_EQ(order, (std::vector<int>{2, 3}));
    EXPECT_EQ(event.SlotCount(), 2u);
}

TEST(Event, ScopedConnectionDisconnectsWhenDropped) {
    Tavrin::Brnt::Event<> event;
    int calls = 0;
    {
        Tavrin::Brnt::ScopedConnection connection = event.Connect([&calls] { ++calls; });
        event.Raise();
    }
    event.Raise();
    EXPECT_EQ(calls, 1);
}

// Version 4, the RFC variant, lower-case hex in groups of 8-4-4-4-12; never the same twice.
TEST(PalUtils, NewGuidIsARandomVersionFourGuid) {
    std::regex const form("[0-9a-f]{8}-[0-9a-f]{4}-4[0-9a-f]{3}-[89ab][0-9a-f]{3}-[0-9a-f]{12}");
    std::set<std::string> seen;
    for (int i = 0; i < 1000; ++i) {
        std::string const guid = Tavrin::Vision::Private::PalUtils::NewGuid();
        ASSERT_TRUE(std::regex_match(guid, form)) << guid;
        seen.insert(guid);
    }
    EXPECT_EQ(seen.size(), 1000u);
}

} // namespace

} // namespace ObjectTesting
