#pragma once

#include "OpenSG/BinaryChecksumHandler.h"
#include "OpenSG/FieldMask.h"

#include <cstdint>
#include <functional>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace osg
{

template <class T>
class RefPtr;

/// What a class tells about one of its fields, so that code that knows no class can walk any
/// container. A field holds either plain values or containers, and has the functions for those.
struct FieldDescription
{
    /// Answers which container takes the place of another, which is never null: one of a class
    /// that the same fields can hold.
    using Replacement = std::function<FieldContainerPtr(const FieldContainerPtr&)>;

    using Write = void (*)(const FieldContainer&, BinaryChecksumHandler&);
    using Containers = void (*)(const FieldContainer&, std::vector<FieldContainerPtr>&);
    using CopyContainers = void (*)(const FieldContainer& from, FieldContainer& copy,
                                    const Replacement& replacementOf);

    std::string name;
    std::string typeName; ///< has "Ptr" in it when the field holds containers
    FieldMask mask;
    bool internal = false; ///< book-keeping that is no part of the content

    Write write = nullptr;           ///< writes the values
    Containers containers = nullptr; ///< appends the containers that are held, null ones left out
    /// Makes the field of a shallow copy hold what replaces the containers that are held. Null for
    /// an internal field, which others keep.
    CopyContainers copyContainers = nullptr;
};

namespace detail
{

template <class Member>
struct MemberPointer;
template <class Class, class Value>
struct MemberPointer<Value Class::*>
{
    using Owner = Class;
};
template <auto Member>
using OwnerOf = typename MemberPointer<decltype(Member)>::Owner;

template <class Value>
void writeValue(BinaryChecksumHandler& handler, const Value& value)
{
    static_assert(std::is_trivially_copyable_v<Value>);
    handler.write(&value, sizeof(value));
}
template <class Value>
void writeValue(BinaryChecksumHandler& handler, const std::vector<Value>& values)
{
    static_assert(std::is_trivially_copyable_v<Value>);
    writeValue(handler, std::uint64_t{values.size()});
    handler.write(values.data(), values.size() * sizeof(Value));
}
inline void writeValue(BinaryChecksumHandler& handler, const std::string& text)
{
    writeValue(handler, std::uint64_t{text.size()});
    handler.write(text.data(), text.size());
}

template <class Handle>
void appendContainers(std::vector<FieldContainerPtr>& out, const Handle& held)
{
    if (held)
        out.push_back(FieldContainerPtr(&*held));
}
template <class Handle>
void appendContainers(std::vector<FieldContainerPtr>& out, const std::vector<Handle>& held)
{
    for (const Handle& one : held)
        appendContainers(out, one);
}

template <class T>
void copyContainers(const RefPtr<T>& from, RefPtr<T>& copy,
                    const FieldDescription::Replacement& replacementOf)
{
    copy = from ? dcast<T>(replacementOf(from)) : Ptr<T>();
}
template <class T>
void copyContainers(const std::vector<RefPtr<T>>& from, std::vector<RefPtr<T>>& copy,
                    const FieldDescription::Replacement& replacementOf)
{
    copy.resize(from.size());
    for (std::size_t i = 0; i < from.size(); ++i)
        copyContainers(from[i], copy[i], replacementOf);
}

template <auto Member>
void appendHeld(const FieldContainer& container, std::vector<FieldContainerPtr>& out)
{
    appendContainers(out, static_cast<const OwnerOf<Member>&>(container).*Member);
}
template <auto Member>
void copyHeld(const FieldContainer& from, FieldContainer& copy,
              const FieldDescription::Replacement& replacementOf)
{
    using Owner = OwnerOf<Member>;
    copyContainers(static_cast<const Owner&>(from).*Member, static_cast<Owner&>(copy).*Member,
                   replacementOf);
}

} // namespace detail

/// Describes a field of plain values that is kept in the given member: a trivially copyable value,
/// a vector of such, or a string.
template <auto Member>
FieldDescription valueField(std::string name, std::string typeName, FieldMask mask,
                            bool internal = false)
{
    return {std::move(name),
            std::move(typeName),
            mask,
            internal,
            [](const FieldContainer& container, BinaryChecksumHandler& handler) {
                using Owner = detail::OwnerOf<Member>;
                detail::writeValue(handler, static_cast<const Owner&>(container).*Member);
            },
            nullptr};
}

/// Describes a field of containers that is kept in the given member: a RefPtr or a vector of them.
///
/// copyContainers  for a field with more to it than the member
template <auto Member>
FieldDescription
containerField(std::string name, std::string typeName, FieldMask mask,
               FieldDescription::CopyContainers copyContainers = &detail::copyHeld<Member>)
{
    return {std::move(name), std::move(typeName),         mask,          false,
            nullptr,         &detail::appendHeld<Member>, copyContainers};
}

/// Describes a field that tells who holds the container, kept in the given member: a handle that
/// counts no reference, or a vector of them.
template <auto Member>
FieldDescription holderField(std::string name, std::string typeName, FieldMask mask)
{
    return {std::move(name), std::move(typeName), mask, true, nullptr, &detail::appendHeld<Member>};
}

} // namespace osg
