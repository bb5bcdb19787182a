#pragma once
// Internal to the plug-in's sources: not part of the installed headers.
//
// Nodes whose value lives in a cell (ValueCells.h). Their handlers take the
// value's room from a cell and give it back to one; otherwise such a node is
// of its kind in every way, and its copies are too.

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <functional>
#include <new>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <typeinfo>
#include <utility>

#include "base/Fraction.h"
#include "json/JsonNode.h"
#include "json/NodeMessages.h"
#include "json/internal/ValueCells.h"

namespace tavrin::plugin::json::detail {

// A T made from `args` in `room`, a cell's; the cell is released when
// making it throws.
template <class T, class... Args>
T* MakeInCell(void* room, Args&&... args) {
    try {
        return new (room) T(std::forward<Args>(args)...);
    } catch (...) {
        ReleaseCell(room);
        throw;
    }
}

// A new T made from `args` in a cell of its own.
template <class T, class... Args>
T* NewInCell(Args&&... args) {
    return MakeInCell<T>(AllocateCell(sizeof(T)), std::forward<Args>(args)...);
}

// Frees the items of a container whose value lives in a cell, and its
// storage, in one sweep (CellNode.cpp): items whose values live in cells are
// freed in place, nested containers within the bound of recursive freeing,
// and the cells of one chunk are given back together. Every other item is
// destroyed as a Node. The container is then released without its
// destructor.
void FreeSweeping(Node::Array& items) noexcept;
void FreeSweeping(Node::Object& members) noexcept;

template <class T>
inline constexpr bool kIsContainer = std::is_same_v<T, Node::Array> || std::is_same_v<T, Node::Object>;

// The three handlers of a node whose value lives in a cell. They behave as
// those Init<T> gives, but the room of the value and of its copies is a cell.
// Named types, so that a sweep can tell its own leaves by their handlers.
template <class T>
struct CellDestroy {
    void operator()(Node* n) const {
        if (n->_buf == nullptr) return;
        auto* value = static_cast<T*>(n->_buf);
        // A swept container's storage is gone and its items with it: it is
        // released without its destructor.
        if constexpr (kIsContainer<T>)
            FreeSweeping(*value);
        else
            value->~T();
        ReleaseCell(n->_buf);
    }
};

template <class T>
struct CellCreate {
    void operator()(Node* n) const { n->_buf = NewInCell<T>(); }
};

template <class T>
struct CellCopy {
    void operator()(Node* n, void* src) const {
        if (n == nullptr || src == nullptr) throw std::runtime_error(messages::node::kCopyNoValue);
        // A container's copy takes its room from _create, level by level.
        if constexpr (kIsContainer<T>)
            n->copy<T>(n, src);
        else
            n->_buf = NewInCell<T>(*static_cast<const T*>(src));
    }
};

// Sixteen bytes of a handler slot, compared as one vector where the machine
// has vectors (and as two words where it has not).
using SlotChunk = std::uint64_t __attribute__((vector_size(16)));

// The object bytes of a handler slot that holds `handler`, taken from one
// made for the purpose.
template <class Function>
struct SlotBytes {
    static_assert(sizeof(Function) % sizeof(SlotChunk) == 0);
    unsigned char bytes[sizeof(Function)];

    template <class Handler>
    static SlotBytes Of(Handler handler) {
        const Function slot(handler);
        SlotBytes of;
        std::memcpy(of.bytes, &slot, sizeof of.bytes);
        return of;
    }

    // Sets in `diff` every bit in which `slot` differs from these bytes.
    [[gnu::always_inline]] void AddDifferences(const Function& slot, SlotChunk& diff) const {
        const auto* held = reinterpret_cast<const unsigned char*>(&slot);
        for (std::size_t at = 0; at < sizeof bytes; at += sizeof(SlotChunk)) {
            SlotChunk mine;
            SlotChunk theirs;
            std::memcpy(&mine, bytes + at, sizeof mine);
            std::memcpy(&theirs, held + at, sizeof theirs);
            diff |= mine ^ theirs;
        }
    }
};

// The bytes of the three handler slots of a node of kind T in a cell.
template <class T>
struct CellHandlerBytes {
    SlotBytes<std::function<void(Node*)>> destroy = decltype(destroy)::Of(CellDestroy<T>{});
    SlotBytes<std::function<void(Node*)>> create = decltype(create)::Of(CellCreate<T>{});
    SlotBytes<std::function<void(Node*, void*)>> copy = decltype(copy)::Of(CellCopy<T>{});
};

template <class T>
inline const CellHandlerBytes<T> kCellHandlerBytes{};

// True when `node` has the handlers of a value of kind T in a cell: its
// slots hold the very bytes those handlers are made of, which settles it
// without a call. Should a slot hold them in some other form, the node is
// not recognised and is freed through its own handlers, which is as right.
// The three slots are compared together, with no branch between them:
// quicker than three comparisons that may each stop early.
template <class T>
[[gnu::always_inline]] inline bool HasCellHandlers(const Node& node) {
    const CellHandlerBytes<T>& cell = kCellHandlerBytes<T>;
    SlotChunk diff{};
    cell.destroy.AddDifferences(node._destroy, diff);
    cell.create.AddDifferences(node._create, diff);
    cell.copy.AddDifferences(node._copy, diff);
    return (diff[0] | diff[1]) == 0;
}

// Puts `handler` in `slot`, which is empty or holds a cell handler, made in
// place: quicker than assigning, which makes a temporary and swaps it in.
// Such a slot holds nothing to release, so it is made over without its
// destructor.
template <class Function, class Handler>
void SetHandler(Function& slot, Handler handler) {
    new (&slot) Function(handler);
}

// Installs kind T on `node`, which holds nothing and has no handlers (as
// Node() makes it) or those of a kind in a cell, with the handlers of a value
// that lives in a cell. The caller sets _buf.
template <class T>
void InstallCellKind(Node& node) {
    node._type = &typeid(T);
    SetHandler(node._destroy, CellDestroy<T>{});
    SetHandler(node._create, CellCreate<T>{});
    SetHandler(node._copy, CellCopy<T>{});
}

// A value the reader made, kept apart from any node: its kind's type record
// and its cell. Only the reader's own values, made by PutInCell, are kept so.
struct MadeValue {
    const std::type_info* type;
    void* value;
};

// Installs, as InstallCellKind does, the one of `Kinds` whose type record is
// `type`.
template <class... Kinds>
void InstallCellKindOf(Node& node, const std::type_info* type) {
    (void)((type == &typeid(Kinds) && (InstallCellKind<Kinds>(node), true)) || ...);
}

// Gives `node`, which holds nothing and has no handlers, the value `made`
// with the cell handlers of its kind.
inline void PlaceMade(Node& node, MadeValue made) {
    node._buf = made.value;
    // Arrays and numbers first: the items of long arrays are mostly those.
    InstallCellKindOf<Node::Array, double, long long, Node::Object, std::string, bool, tavrin::base::Fraction>(
        node, made.type);
}

// Gives `node`, which holds nothing and has no handlers or those of a kind in
// a cell, a value made from `args` in a cell of the arena.
template <class T, class... Args>
void PutInCell(Node& node, CellArena& arena, Args&&... args) {
    node._buf = MakeInCell<T>(arena.Allocate(sizeof(T)), std::forward<Args>(args)...);
    InstallCellKind<T>(node);
}

}  // namespace tavrin::plugin::json::detail
