// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Changing the lists of a document: waypoints, routes, tracks, and the points of routes and segments.

#include <common/Export.h>

#include <algorithm>
#include <cstddef>
#include <functional>
#include <iterator>
#include <utility>
#include <vector>

namespace vexaTransferLib {

class GpxPoint;
class GpxRoute;
class GpxTrack;

/// What the editors of lists check. A part of GpxListEditor.
class VEXATRANSFERLIB_API GpxListChecks {
public:
    /// Whose points a list has.
    enum Owner { kDocument, kTrack, kRoute };

    /// \{
    /// Throws what the operations that add an object to the owner throw.
    /// \param route the route whose points are edited; null for any other list
    static void RequireObject(Owner owner, const GpxRoute* route, const GpxPoint& point);
    static void RequireObject(Owner owner, const GpxRoute* route, const GpxRoute& object);
    static void RequireObject(Owner owner, const GpxRoute* route, const GpxTrack& object);
    /// \}
    /// \throws dbc::precondition_error "There is no such place in the list." unless \p isPlace
    static void RequirePlace(bool isPlace);
};

/// Changes one list of a document, a route or a track, which gives it: `document.EditWaypoints()`. It belongs to the
/// object that gave it and is valid until that is moved, assigned to or destroyed; two editors of one list may be used
/// in turn. Copying an editor copies no object.
///
/// Objects are counted from 0. Every change of the list makes iterators and references into it invalid, as those of
/// `std::vector` are. An operation that throws leaves the list unchanged. Objects can be changed in place through the
/// references and iterators; assigning a point of another kind than the list has is an error that nothing checks.
///
///     for (GpxPoint& point : track.EditPoints(0))
///         point.ClearElevation();
///     document.EditWaypoints().RemoveIf([](const GpxPoint& point) { return IsFarAway(point); });
template <class Object>
class GpxListEditor {
public:
    /// \{
    /// The objects of the list, to be changed in place.
    typedef typename std::vector<Object>::iterator Iterator;
    typedef Iterator iterator; ///< for the standard's algorithms
    Iterator begin() const { return objects_->begin(); }
    Iterator end() const { return objects_->end(); }
    /// \}

    /// How many objects the list has.
    std::size_t GetCount() const { return objects_->size(); }

    /// The object at \p index. Constant time.
    /// \throws dbc::precondition_error "There is no such place in the list."
    Object& operator[](std::size_t index) const {
        GpxListChecks::RequirePlace(index < objects_->size());
        return (*objects_)[index];
    }

    /// Appends an object. Amortised constant time.
    /// \throws dbc::precondition_error what the `Add` operation of the owner throws; std::bad_alloc
    void Append(Object object) const { Insert(objects_->size(), std::move(object)); }

    /// Inserts an object before the one at \p index, or at the end. Costs a move of every object after it.
    /// \throws dbc::precondition_error what the `Add` operation of the owner throws, then "There is no such place in
    ///         the list."; std::bad_alloc
    void Insert(std::size_t index, Object object) const {
        GpxListChecks::RequireObject(owner_, route_, object);
        GpxListChecks::RequirePlace(index <= objects_->size());
        objects_->insert(At(index), std::move(object));
    }

    /// Replaces the object at \p index. Constant time but for the destruction of the old one.
    /// \throws dbc::precondition_error as Insert does
    void Replace(std::size_t index, Object object) const {
        GpxListChecks::RequireObject(owner_, route_, object);
        GpxListChecks::RequirePlace(index < objects_->size());
        (*objects_)[index] = std::move(object);
    }

    /// Removes the object at \p index and those after it, \p count in all. Costs a move of every object after them.
    /// \throws dbc::precondition_error "There is no such place in the list." unless there are so many
    void Remove(std::size_t index, std::size_t count = 1) const {
        GpxListChecks::RequirePlace(index <= objects_->size() && count <= objects_->size() - index);
        objects_->erase(At(index), At(index + count));
    }

    /// Removes all objects that the condition holds for; the others keep their order. Linear, however many they are.
    /// The condition is asked once for each object, in order, before anything is changed: what it throws leaves the
    /// list unchanged.
    /// \returns how many were removed
    template <class Condition>
    std::size_t RemoveIf(Condition condition) const {
        std::vector<bool> isRemoved;
        isRemoved.reserve(objects_->size());
        for (const Object& object : *objects_)
            isRemoved.push_back(condition(object));
        std::size_t index = 0;
        const auto kept = std::remove_if(objects_->begin(), objects_->end(),
                                         [&](const Object&) { return isRemoved[index++]; });
        const auto count = static_cast<std::size_t>(objects_->end() - kept);
        objects_->erase(kept, objects_->end());
        return count;
    }

    /// Moves the object at \p from to the place \p to; those between move up by one. Costs a move of each of them.
    /// \throws dbc::precondition_error "There is no such place in the list."
    void Move(std::size_t from, std::size_t to) const {
        GpxListChecks::RequirePlace(from < objects_->size() && to < objects_->size());
        if (from < to)
            std::rotate(At(from), At(from + 1), At(to + 1));
        else
            std::rotate(At(to), At(from), At(from + 1));
    }

    /// Reverses the order. Linear.
    void Reverse() const { std::reverse(objects_->begin(), objects_->end()); }

    /// Sorts the objects; equal ones keep their order. \p isBefore must not throw.
    template <class Order>
    void Sort(Order isBefore) const {
        std::stable_sort(objects_->begin(), objects_->end(), std::move(isBefore));
    }

private:
    friend class GpxDocument;
    friend class GpxRoute;
    friend class GpxTrack;

    GpxListEditor(std::vector<Object>& objects, GpxListChecks::Owner owner, const GpxRoute* route = nullptr)
        : objects_(&objects), owner_(owner), route_(route) {}

    Iterator At(std::size_t index) const { return objects_->begin() + static_cast<std::ptrdiff_t>(index); }

    std::vector<Object>* objects_;
    GpxListChecks::Owner owner_;
    const GpxRoute* route_;
};

} // namespace vexaTransferLib
