// Who wants to know of changes, and who tells them.
#include "utils/observable.h"

#include "support/failure.h"

#include <gtest/gtest.h>

#include <functional>

using namespace Color;

namespace
{

class Counter : public Observer
{
public:
    void update() override
    {
        ++m_updates;
        if (m_whenUpdated)
            m_whenUpdated();
    }

    int m_updates = 0;
    std::function<void()> m_whenUpdated;
};

class Observables : public testing::Test
{
protected:
    // Two observers in the order in which they are told.
    Counter m_observers[2];
    Counter& m_first = m_observers[0];
    Counter& m_second = m_observers[1];
    Observable m_observable;
};

} // namespace

TEST_F(Observables, TellEachObserverOnce)
{
    m_observable.addObserver(&m_first);
    m_observable.addObserver(&m_first);
    m_observable.addObserver(&m_second);
    m_observable.addObserver(nullptr);
    m_observable.notifyObservers();
    EXPECT_EQ(m_first.m_updates, 1);
    EXPECT_EQ(m_second.m_updates, 1);
}

TEST_F(Observables, ForgetWhomTheyAreToForget)
{
    m_observable.addObserver(&m_first);
    m_observable.removeObserver(&m_first);
    m_observable.removeObserver(nullptr);
    m_observable.notifyObservers();
    EXPECT_EQ(m_first.m_updates, 0);
}

TEST_F(Observables, RefuseToForgetAStranger)
{
    m_observable.addObserver(&m_first);
    EXPECT_EQ(failureOf([&] { m_observable.removeObserver(&m_second); }), (Failure{0x120006, "Observer not found."}));
}

TEST_F(Observables, HaveCopiesWithTheSameObservers)
{
    m_observable.addObserver(&m_first);
    Observable copy = m_observable;
    copy.removeObserver(&m_first);
    copy.addObserver(&m_second);
    m_observable.notifyObservers();
    copy.notifyObservers();
    EXPECT_EQ(m_first.m_updates, 1);
    EXPECT_EQ(m_second.m_updates, 1);
}

TEST_F(Observables, TellNoObserverThatAnotherOneHasRemoved)
{
    m_observable.addObserver(&m_first);
    m_observable.addObserver(&m_second);
    m_first.m_whenUpdated = [&] { m_observable.removeObserver(&m_second); };
    m_observable.notifyObservers();
    EXPECT_EQ(m_second.m_updates, 0);
}

TEST_F(Observables, TellAnObserverOnceThatComesAgainMeanwhile)
{
    m_observable.addObserver(&m_first);
    m_first.m_whenUpdated = [&]
    {
        m_observable.removeObserver(&m_first);
        m_observable.addObserver(&m_first);
        m_observable.addObserver(&m_second);
    };
    m_observable.notifyObservers();
    EXPECT_EQ(m_first.m_updates, 1);
    EXPECT_EQ(m_second.m_updates, 0);
}
