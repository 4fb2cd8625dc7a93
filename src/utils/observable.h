// Who wants to know of changes, and who tells them.
#ifndef TAVRIN_UTILS_OBSERVABLE_H
#define TAVRIN_UTILS_OBSERVABLE_H

#include <set>

namespace Color
{

class Observer
{
public:
    virtual ~Observer() = default;
    virtual void update() = 0;
};

// Observers are not owned: each is taken off before it goes. A copy has the same observers.
class Observable
{
public:
    // Null, and an observer that is there already, change nothing.
    void addObserver(Observer* observer);
    // Null changes nothing; an observer that is not there is refused.
    void removeObserver(Observer* observer);

    // Tells each observer once, in the order of their addresses. An observer may add and remove observers, itself among them: one
    // that was removed is not told any more, one that was added is told of the next change.
    void notifyObservers();

private:
    std::set<Observer*> m_observers;
};

} // namespace Color

#endif
