#pragma once

#include <type_traits>

#include "zorv/export.h"

/// Base of every class whose member functions a Link may call.
class ZORV_API LinkHdl {};

/// A bound callback: an object and one of its member functions that takes one pointer and returns long.
///
/// The link owns nothing; the object must live as long as the link is called. Who calls a link says what the pointer
/// is: a reader keyword passes its ZoReaderObject*, an observer its ZoNotifyEvent*.
class ZORV_API Link {
  public:
    using Function = long (LinkHdl::*)(void*);

    Link() = default;
    Link(LinkHdl* object, Function member) : target(object), function(member) {}
    /// Binds a member function with its real argument type; T derives from LinkHdl and from the function's class.
    template <class T, class C, class A>
    requires std::is_base_of_v<LinkHdl, T> && std::is_base_of_v<C, T> Link(T* object, long (C::*member)(A*))
        : target(object), function(reinterpret_cast<Function>(member)), call(&CallTyped<T, C, A>) {}
    Link(const Link&) = default;
    Link& operator=(const Link&) = default;
    virtual ~Link() = default;

    bool IsSet() const { return target && function; }
    bool operator!() const { return !IsSet(); }

    /// Calls the function; its result is cut to int. 0 when the link is not set.
    int Call(void* argument) const {
        if (!IsSet()) return 0;
        return static_cast<int>(call ? call(*this, argument) : (target->*function)(argument));
    }

    LinkHdl* target = nullptr;
    Function function = nullptr;

  private:
    // Gives the member pointer its own type back before the call.
    template <class T, class C, class A>
    static long CallTyped(const Link& link, void* argument) {
        const auto member = reinterpret_cast<long (C::*)(A*)>(link.function);
        return (static_cast<T*>(link.target)->*member)(static_cast<A*>(argument));
    }

    long (*call)(const Link&, void*) = nullptr;
};
