#pragma once

#include "OpenSG/Attachment.h"
#include "OpenSG/ConcreteContainer.h"
#include "OpenSG/GeoProperty.h"

namespace osg
{

class UVConstraintAttachment;
using UVConstraintAttachmentPtr = Ptr<UVConstraintAttachment>;

/// The fields of UVConstraintAttachment.
class UVConstraintAttachmentBase : public Attachment
{
public:
    static constexpr unsigned EdgesUFieldNumber = Attachment::NextFieldNumber;
    static constexpr unsigned EdgesVFieldNumber = EdgesUFieldNumber + 1;
    static constexpr unsigned NextFieldNumber = EdgesVFieldNumber + 1;
    static constexpr FieldMask EdgesUFieldMask = FieldMask::bit(EdgesUFieldNumber);
    static constexpr FieldMask EdgesVFieldMask = FieldMask::bit(EdgesVFieldNumber);

    static FieldContainerType& getClassType();
    /// The type by which a geometry finds its attachment.
    static const FieldContainerType& _type;

    /// A new UVConstraintAttachment without edges.
    static UVConstraintAttachmentPtr create();

    /// NullFC until made by createEdgesField.
    [[nodiscard]] GeoIndicesPtr getEdgesU() const { return _edgesU.get(); }
    [[nodiscard]] GeoIndicesPtr getEdgesV() const { return _edgesV.get(); }

protected:
    UVConstraintAttachmentBase() = default;
    /// The copy shares the lists.
    UVConstraintAttachmentBase(const UVConstraintAttachmentBase&) = default;
    ~UVConstraintAttachmentBase() override = default;

    RefPtr<GeoIndices> _edgesU;
    RefPtr<GeoIndices> _edgesV;
};

/// The edges of a geometry that are held straight in the UV plane; hangs on the geometry core.
///
/// One list for each direction, with two of the geometry's vertex ids for each edge. Lists are
/// chosen by a number: 0 for EdgesU (held at one v), any other for EdgesV (held at one u).
/// Nothing here sends a notice; writers tell the list, then the attachment. A notice on the
/// attachment makes the geometries that it hangs on known to UVConstraintsTracker.
class UVConstraintAttachment final
    : public ConcreteContainer<UVConstraintAttachment, UVConstraintAttachmentBase>
{
public:
    static FieldContainerType& getClassType();
    using UVConstraintAttachmentBase::create;

    /// The list of a direction, NullFC if there is none yet; `mask` becomes that of its field.
    GeoIndicesPtr getEdgesField(unsigned direction, FieldMask& mask) const;
    /// Gives a direction an empty list in the place of the one that it may have, and returns it.
    GeoIndicesPtr createEdgesField(unsigned direction);
    /// Does either list hold an edge?
    [[nodiscard]] bool hasConstrainedEdges() const;

    /// Tells the tracker before the callbacks, so that these find it up to date.
    void changed(FieldMask mask, unsigned origin) override;

private:
    friend ConcreteContainer<UVConstraintAttachment, UVConstraintAttachmentBase>;
    UVConstraintAttachment() = default;
    UVConstraintAttachment(const UVConstraintAttachment&) = default;
};

} // namespace osg
