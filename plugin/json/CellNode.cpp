#include "json/internal/CellNode.h"

#include <string>
#include <typeinfo>

#include "base/Fraction.h"
#include "json/internal/HeapAhead.h"
#include "json/internal/ReleaseDepth.h"

namespace tavrin::plugin::json::detail {

namespace {

// Gives back the storage of a vector whose elements have all been destroyed.
template <class Vector>
void ReleaseStorage(Vector& items) noexcept {
    if (items.data() != nullptr) items.get_allocator().deallocate(items.data(), items.capacity());
}

// Frees the items of a container whose value lives in a cell, ending their
// lives. Items with the cell handlers of their kind are freed here, nested
// containers too as deep as the thread's bound of recursive freeing allows;
// their handlers hold no state, so skipping their destructors changes
// nothing. Their cells are given back a run of one chunk at a time. Any
// other item is destroyed as a Node, which counts the levels swept above it.
//
// Items go from the last to the first, so blocks are freed in about the
// opposite order to the one they were allocated in. With the C library's
// allocator that measured quicker than freeing them in order, and it leaves
// the blocks lowest in memory, which the next allocations take first, as the
// ones touched last. Handlers a caller installed on items therefore run last
// item first; nothing else depends on the order.
class Sweep {
public:
    explicit Sweep(int levels) : _levels(levels), _levelsLeft(levels) {}

    void Free(Node::Array& items) noexcept {
        for (auto item = items.rbegin(); item != items.rend(); ++item) FreeItem(*item);
        ReleaseStorage(items);
    }

    void Free(Node::Object& members) noexcept {
        for (auto member = members.rbegin(); member != members.rend(); ++member) {
            member->key.~basic_string();
            FreeItem(member->value);
        }
        ReleaseStorage(members);
    }

private:
    // Leaves of the kinds that need no destructor, most of a tree's items,
    // are freed here in the loop; strings, containers and the rest in a call.
    [[gnu::always_inline]] void FreeItem(Node& item) noexcept {
        if (!FreeCellValue<double, long long, bool, tavrin::base::Fraction>(item)) FreeOther(item);
    }

    [[gnu::noinline]] void FreeOther(Node& item) noexcept {
        if (!FreeCellValue<std::string, Node::Object, Node::Array>(item)) Destroy(item);
    }

    // False, with `item` untouched, unless it holds a value of one of the
    // kinds in a cell, with that kind's cell handlers (and, for a container,
    // a level is left to sweep).
    template <class... Kinds>
    [[gnu::always_inline]] bool FreeCellValue(Node& item) noexcept {
        return ((item._type == &typeid(Kinds) && FreeCellValueOf<Kinds>(item)) || ...);
    }

    template <class T>
    [[gnu::always_inline]] bool FreeCellValueOf(Node& item) noexcept {
        auto* value = static_cast<T*>(item._buf);
        if (value == nullptr || !HasCellHandlers<T>(item)) return false;
        if constexpr (kIsContainer<T>) {
            if (_levelsLeft == 0) return false;
            --_levelsLeft;
            // The blocks of the containers before this one, swept next.
            PrefetchFrom<-8192, 8, Use::kWrite>(value->data());
            Free(*value);
            ++_levelsLeft;
        } else {
            value->~T();
        }
        _cells.Add(value);
        return true;
    }

    // Destroys `item` as a Node, counting the levels swept above it as
    // containers being freed by recursion.
    void Destroy(Node& item) noexcept {
        const ReleaseLevels swept(_levels - _levelsLeft);
        item.~Node();
    }

    CellReleases _cells;
    const int _levels;  // how deep the sweep may go
    int _levelsLeft;
};

}  // namespace

void FreeSweeping(Node::Array& items) noexcept {
    Sweep(kRecursiveReleaseLevels - tRecursiveReleases).Free(items);
}

void FreeSweeping(Node::Object& members) noexcept {
    Sweep(kRecursiveReleaseLevels - tRecursiveReleases).Free(members);
}

}  // namespace tavrin::plugin::json::detail
