// Who wants to know of changes, and who tells them.
#ifndef TAVRIN_UTILS_OBSERVABLE_H
#define TAVRIN_UTILS_OBSERVABLE_H

namespace Color
{

class Observer
{
public:
    virtual ~Observer() = default;
    virtual void update() = 0;
};

} // namespace Color

#endif
