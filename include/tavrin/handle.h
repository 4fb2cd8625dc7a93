// What all handles to the library's objects have in common.
#ifndef TAVRIN_HANDLE_H
#define TAVRIN_HANDLE_H

#include <memory>

namespace Tavrin
{

// Copies share the object, and the last one deletes it.
template <class Object>
class Handle
{
public:
    Handle() = default;
    // Takes ownership.
    explicit Handle(Object* object) : m_object(object) {}

    // Lets go of the object, or takes ownership of another one.
    void reset() { m_object.reset(); }
    void reset(Object* object) { m_object.reset(object); }

    // Null when the handle is empty.
    Object* get() const { return m_object.get(); }
    Object& operator*() const { return *m_object; }
    Object* operator->() const { return m_object.get(); }
    // The number of handles that share the object; 0 when empty.
    long getUseCount() const { return m_object.use_count(); }
    explicit operator bool() const { return m_object != nullptr; }

private:
    std::shared_ptr<Object> m_object;
};

} // namespace Tavrin

#endif
