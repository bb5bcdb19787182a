#pragma once

namespace tavrin::base {

// A callable framework interface: a result type and the argument types.
template <class R, class... Args>
class IFunc {
public:
    virtual ~IFunc() {}
    virtual R operator()(Args... args) = 0;
};

}  // namespace tavrin::base
