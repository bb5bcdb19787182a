#pragma once
// Internal to the plug-in's sources: not part of the installed headers.
//
// Where the quick reader puts the items of a container until the container
// ends, and how it hands them over. A container gets room for as many items
// as `guess` says (how many the last container in the same place had:
// documents repeat their shapes); one that ends with exactly that many is
// handed over whole, without moving an item. Otherwise its items are moved
// once into a container of exactly their number; in a place where the last
// array missed its guess, they wait for that in room the level keeps.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <memory>
#include <new>
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

// Room for items beyond an array's own, from the standard allocator, whose
// items are made and ended here. Items moved out are left without their
// destructors: a node moved from holds nothing and no handler, so ending it
// would do nothing.
class ItemRun {
public:
    ItemRun() = default;
    ItemRun(ItemRun&& other) noexcept
        : _items(std::exchange(other._items, nullptr)),
          _size(std::exchange(other._size, 0)),
          _capacity(std::exchange(other._capacity, 0)) {}
    ItemRun(const ItemRun&) = delete;
    ItemRun& operator=(const ItemRun&) = delete;
    ItemRun& operator=(ItemRun&&) = delete;
    ~ItemRun() {
        Clear();
        if (_items != nullptr) std::allocator<Node>().deallocate(_items, _capacity);
    }

    std::size_t Size() const { return _size; }
    std::size_t Capacity() const { return _capacity; }
    bool Full() const { return _size == _capacity; }

    // Takes room for `capacity` items; the run must never have had any.
    void Reserve(std::size_t capacity) {
        _items = std::allocator<Node>().allocate(capacity);
        _capacity = capacity;
    }

    // A new empty item at the end; the run must not be full.
    Node& Add() {
        Node* item = new (_items + _size) Node();
        ++_size;
        return *item;
    }

    // Moves the items to the end of `to`, which has room for them.
    void MoveTo(Node::Array& to) {
        AppendMoved(to, _items, _items + _size);
        _size = 0;
    }

    // Ends the items that are left.
    void Clear() {
        for (; _size != 0; --_size) _items[_size - 1].~Node();
    }

private:
    Node* _items = nullptr;
    std::size_t _size = 0;
    std::size_t _capacity = 0;
};

// What the reader keeps of one nesting level of arrays, from one array to
// the next: runs of room where items go once an array outgrows its own.
// Their storage stays for the next array. The first run is kept apart, so
// that a level whose arrays need one allocates no list of runs.
struct ArrayLevel {
    ItemRun firstRun;
    std::vector<ItemRun> laterRuns;
    // Room, empty, that the items of an array whose size is hard to guess
    // wait in before they move to room of their exact size.
    Node::Array spare;

    ItemRun& Run(std::size_t i) { return i == 0 ? firstRun : laterRuns[i - 1]; }
};

// The items of one array being read. Beyond the array's own room, items go
// into the level's runs, each with twice the room of the one before, so
// that no item moves until the array ends, however long it grows.
class ItemGathering {
public:
    // Where the last array in this place missed its guess, this one most
    // likely will too, and its items will move at its end: they wait in the
    // level's spare room, which the cache still holds, rather than in new
    // room. Otherwise the array gets room of the guessed size, with a hint
    // for the blocks its items will ask for next.
    ItemGathering(ArrayLevel& level, SizeGuess& guess) : _level(level), _guess(guess) {
        if (guess.missed && _level.spare.capacity() >= guess.count) {
            _own.swap(_level.spare);
            return;
        }
        _own.reserve(guess.count);
        if (guess.count != 0) PrefetchPast<1024, 4, Use::kWrite>(_own.data() + guess.count);
    }
    // Items of an array not handed over end with it.
    ~ItemGathering() {
        for (std::size_t i = 0; i < _runsUsed; ++i) _level.Run(i).Clear();
    }
    ItemGathering(const ItemGathering&) = delete;
    ItemGathering& operator=(const ItemGathering&) = delete;

    // A new empty item at the end of the array.
    Node& Add() {
        if (_runsUsed == 0) {
            if (_own.size() < _own.capacity()) return _own.emplace_back();
            return NextRun(_own.capacity()).Add();
        }
        ItemRun& last = _level.Run(_runsUsed - 1);
        return (last.Full() ? NextRun(last.Capacity()) : last).Add();
    }

    // Gives `node`, which holds nothing and has no handlers, an array of
    // exactly the items.
    void HandTo(Node& node, CellArena& arena) {
        std::size_t count = _own.size();
        for (std::size_t i = 0; i < _runsUsed; ++i) count += _level.Run(i).Size();
        Node::Array* exact = NewContainer(node, arena, count, _guess, _own);
        if (exact == nullptr) return;
        MoveItems(_own, *exact);
        for (std::size_t i = 0; i < _runsUsed; ++i) _level.Run(i).MoveTo(*exact);
        if (_own.capacity() > _level.spare.capacity()) _level.spare.swap(_own);
    }

private:
    static constexpr std::size_t kLeastRun = 4;

    // A run kept from an earlier array is taken with the room it has.
    ItemRun& NextRun(std::size_t previous) {
        if (_runsUsed > _level.laterRuns.size()) _level.laterRuns.emplace_back();
        ItemRun& run = _level.Run(_runsUsed++);
        if (run.Capacity() == 0) run.Reserve(std::max(kLeastRun, 2 * previous));
        return run;
    }

    ArrayLevel& _level;
    SizeGuess& _guess;
    Node::Array _own;
    std::size_t _runsUsed = 0;
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
