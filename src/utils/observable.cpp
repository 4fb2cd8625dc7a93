// Who wants to know of changes, and who tells them.
#include "utils/observable.h"

#include "utils/errorMessage.h"

namespace Color
{

void Observable::addObserver(Observer* observer)
{
    if (observer)
    {
        m_observers.insert(observer);
    }
}

void Observable::removeObserver(Observer* observer)
{
    if (observer && m_observers.erase(observer) == 0)
    {
        throw failure(ErrorIds::kObserverNotFound, Module::kPreferences);
    }
}

void Observable::notifyObservers()
{
    std::set<Observer*> const observers = m_observers;
    for (Observer* const observer : observers)
    {
        if (m_observers.contains(observer))
        {
            observer->update();
        }
    }
}

} // namespace Color
