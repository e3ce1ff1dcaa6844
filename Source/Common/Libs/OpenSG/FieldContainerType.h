#pragma once

#include "OpenSG/FieldContainerPtr.h"
#include "OpenSG/FieldDescription.h"

#include <string>
#include <vector>

namespace osg
{

/// A class of containers: its name, its base, its fields, and how to make one. There is one object
/// for each class, made on first use and never destroyed; compare by address or by getId.
class FieldContainerType
{
public:
    using Create = FieldContainerPtr (*)();

    /// Attachments of one group take each other's place on a container (see AttachmentContainer).
    enum Group : unsigned
    {
        OwnGroup,
        GroupOfParent
    };

    /// parent  the type of the base class; null for the root
    /// create  makes a new container with count 0; null for an abstract class
    /// fields  the fields that the class adds to those of its base
    FieldContainerType(std::string name, const FieldContainerType* parent, Create create,
                       std::vector<FieldDescription> fields, Group group = OwnGroup);
    FieldContainerType(const FieldContainerType&) = delete;
    FieldContainerType& operator=(const FieldContainerType&) = delete;

    [[nodiscard]] const std::string& getName() const { return _name; }
    [[nodiscard]] unsigned getId() const { return _id; }
    [[nodiscard]] unsigned getGroupId() const { return _groupId; }
    [[nodiscard]] const FieldContainerType* getParent() const { return _parent; }

    /// Whether this is the other type or comes after it in the inheritance chain.
    [[nodiscard]] bool isDerivedFrom(const FieldContainerType& other) const;
    /// The same by name, for lists of names that come as text.
    [[nodiscard]] bool isDerivedFrom(const std::string& name) const;

    /// A new container with count 0; NullFC for an abstract class.
    [[nodiscard]] FieldContainerPtr createContainer() const;
    /// The container whose shallowCopy is a fresh one of this class. It belongs to the type and is
    /// not to be changed. NullFC for an abstract class.
    [[nodiscard]] FieldContainerPtr getPrototype() const;

    /// Fields of the bases and of the class itself, bases first, numbered from 1.
    [[nodiscard]] unsigned getNumFieldDescs() const;
    /// Field 1 to getNumFieldDescs(); null for any other number.
    [[nodiscard]] const FieldDescription* getFieldDesc(unsigned number) const;

private:
    std::string _name;
    const FieldContainerType* _parent;
    Create _create;
    std::vector<FieldDescription> _fields; ///< those of the bases included
    unsigned _id;
    unsigned _groupId;
    mutable FieldContainerPtr _prototype;
};

} // namespace osg
