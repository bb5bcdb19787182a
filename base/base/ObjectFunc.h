#pragma once

#include <functional>
#include <typeinfo>
#include <utility>

#include "base/IFunc.h"
#include "base/Object.h"

namespace tavrin::base {

// A named framework object that is also a callable: the unit the plug-in
// adds to the factory's registry. Allocated and released through
// object_base's operators (new/delete on this class use them).
template <class R, class... Args>
class object_func : public object, public IFunc<R, Args...> {
public:
    // Named `name`, calling `fn` (a null `fn` leaves the callable empty).
    object_func(const char* name, R (*fn)(Args...)) : object(name) {
        std::function<R(Args...)> callable(fn);
        _func.swap(callable);
    }
    ~object_func() override {}
    object_func& operator=(const object_func&) = delete;

    // Throws std::bad_function_call when the callable is empty.
    R operator()(Args... args) override {
        if (!_func) throw std::bad_function_call();
        return _func(std::forward<Args>(args)...);
    }

    // A copy with the same name, id, keywords, flag and callable; null when
    // this is an object of a class derived from this one.
    object* Clone() const override {
        if (typeid(*this) != typeid(object_func)) return nullptr;
        return new object_func(*this);
    }

protected:
    object_func(const object_func& other)
        : object(other), IFunc<R, Args...>(), _func(other._func) {}

private:
    std::function<R(Args...)> _func;
};

}  // namespace tavrin::base
