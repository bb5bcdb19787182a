#pragma once
// Internal to the plug-in's sources: not part of the installed headers.
//
// Where the quick reader puts the items of a container until the container
// ends, and how it hands them over. A container gets room for as many items
// as `guess` says (how many the last container in the same place had:
// documents repeat their shapes); one that ends with exactly that many is
// handed over whole, without moving an item. Otherwise its items are moved
// once into a container of exactly their number; items of an array beyond
// its room wait for that as bare values.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <typeinfo>
#include <utility>
#include <vector>

#include "json/JsonNode.h"
#include "json/common/PositionIndex.h"
#include "json/internal/CellNode.h"
#include "json/internal/HeapAhead.h"
#include "json/internal/ValueCells.h"

namespace tavrin::plugin::json::detail {

// Moves the items from `first` to `last` to the end of `to`, which has room
// for them.
template <class Container, class Item>
void AppendMoved(Container& to, Item* first, Item* last) {
    to.insert(to.end(), std::make_move_iterator(first), std::make_move_iterator(last));
}

// Moves the items of `from` to the end of `to`, which has room for them,
// and empties `from`.
template <class Container>
void MoveItems(Container& from, Container& to) {
    AppendMoved(to, from.data(), from.data() + from.size());
    from.clear();
}

// What the reader guesses of the next container in one place: as many items
// as the last one there had, and whether that one missed its own guess.
struct SizeGuess {
    std::uint32_t count = 0;
    bool missed = false;
};

// Gives `node`, which holds nothing and has no handlers, a container in a
// cell of `arena`, for `count` items; sets `guess` to that count. When `own`
// holds exactly that many items in exactly its room, the container takes its
// storage and the result is null; otherwise it is the container, with room
// for the items.
template <class Container>
Container* NewContainer(Node& node, CellArena& arena, std::size_t count, SizeGuess& guess, Container& own) {
    guess.missed = count != guess.count;
    guess.count = static_cast<std::uint32_t>(std::min<std::size_t>(count, UINT32_MAX));
    PutInCell<Container>(node, arena);
    auto& container = *static_cast<Container*>(node._buf);
    if (own.size() == count && own.capacity() == count) {
        container.swap(own);
        return nullptr;
    }
    container.reserve(count);
    return &container;
}

// What the reader keeps of one nesting level of arrays, from one array to
// the next.
struct ArrayLevel {
    // The node the items beyond an array's own room are read into, each in
    // turn; it keeps no value, only the cell handlers of the last, which hold
    // nothing.
    Node item;
    // Those items' values, in order, until the array ends: a seventh of the
    // room their nodes would take, so they stay in the cache and move
    // quickly. The room stays for the next array.
    std::vector<MadeValue> made;
};

// The items of one array being read. As many as the guess says go into the
// array's own room; the items beyond, or all of them where the last array in
// this place missed its guess, are kept as bare values until the array ends
// and are then placed in room of exactly their number.
class ItemGathering {
public:
    // A guess from an array that missed its own is no guess: room for it
    // would most likely have to move. Otherwise the array gets room of the
    // guessed size, with a hint for the blocks its items will ask for next.
    ItemGathering(ArrayLevel& level, SizeGuess& guess) : _level(level), _guess(guess) {
        if (guess.missed || guess.count == 0) return;
        _own.reserve(guess.count);
        PrefetchFrom<1024, 4, Use::kWrite>(_own.data() + guess.count);
    }
    // Values of an array not handed over end with it.
    ~ItemGathering() {
        if (!_level.made.empty()) Drop(_level.made);
    }
    ItemGathering(const ItemGathering&) = delete;
    ItemGathering& operator=(const ItemGathering&) = delete;

    // Reads the next item with `read`, which makes a value in an empty node
    // (or one with the cell handlers of a kind) and tells whether it did.
    template <class Read>
    [[gnu::always_inline]] bool Add(Read read) {
        if (_own.size() < _own.capacity()) return read(_own.emplace_back());
        Node& item = _level.item;
        if (!read(item)) return false;
        // Word by word: the reader has just stored them so, and one load of
        // both, which the compiler would make of two, waits for the stores to
        // reach the cache. The empty statement keeps them apart. The item
        // lets go of its value only once the value is kept: should keeping
        // it fail for want of memory, the item still frees it.
        const std::type_info* type = item._type;
        __asm__("" : "+r"(type));
        _level.made.push_back({type, item._buf});
        item._buf = nullptr;
        return true;
    }

    // Gives `node`, which holds nothing and has no handlers, an array of
    // exactly the items.
    void HandTo(Node& node, CellArena& arena) {
        std::vector<MadeValue>& made = _level.made;
        Node::Array* exact = NewContainer(node, arena, _own.size() + made.size(), _guess, _own);
        if (exact == nullptr) return;
        MoveItems(_own, *exact);
        if (!made.empty()) Place(made, *exact);
    }

private:
    // Out of line, as the setting up of their loops over the kinds' handlers
    // would cost every array that needs none.
    [[gnu::noinline]] static void Place(std::vector<MadeValue>& made, Node::Array& to) {
        for (const MadeValue& value : made) PlaceMade(to.emplace_back(), value);
        made.clear();
    }

    [[gnu::noinline]] static void Drop(std::vector<MadeValue>& made) noexcept {
        for (const MadeValue& value : made) {
            Node item;
            PlaceMade(item, value);
        }
        made.clear();
    }

    ArrayLevel& _level;
    SizeGuess& _guess;
    Node::Array _own;
};

// What the reader keeps of one nesting level of objects, from one object to
// the next.
struct ObjectLevel {
    // Where members go once an object outgrows its own room.
    Node::Object scratch;
    // The members by key hash.
    common::PositionIndex index;
};

// The members of one object being read. Beyond the object's own room, they
// go on in the level's scratch table, in one piece for their index.
class MemberGathering {
public:
    MemberGathering(ObjectLevel& level, SizeGuess& guess) : _level(level), _guess(guess) {
        _own.reserve(guess.count);
        _level.index.Clear();
    }

    common::PositionIndex& Index() { return _level.index; }

    // The table the next member goes into, holding the members so far.
    Node::Object& Items() {
        if (_inScratch) return _level.scratch;
        if (_own.size() < _own.capacity()) return _own;
        _level.scratch.clear();
        MoveItems(_own, _level.scratch);
        Node::Object().swap(_own);
        _inScratch = true;
        return _level.scratch;
    }

    // Gives `node`, which holds nothing and has no handlers, an object of
    // exactly the members.
    void HandTo(Node& node, CellArena& arena) {
        Node::Object& items = _inScratch ? _level.scratch : _own;
        Node::Object* exact = NewContainer(node, arena, items.size(), _guess, _own);
        if (exact != nullptr) MoveItems(items, *exact);
    }

private:
    ObjectLevel& _level;
    SizeGuess& _guess;
    Node::Object _own;
    bool _inScratch = false;
};

}  // namespace tavrin::plugin::json::detail
