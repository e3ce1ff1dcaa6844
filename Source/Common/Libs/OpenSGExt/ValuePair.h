#pragma once

#include "OpenSG/Attachment.h"
#include "OpenSG/ConcreteContainer.h"

#include <map>
#include <string>

namespace osg
{

class ValuePair;
using ValuePairPtr = Ptr<ValuePair>;

/// Texts that are kept under keys and hang on a node, at binding 0. What is written into a scene
/// file and read from it again.
///
/// Nothing here sends a notice; writers tell the node when they hang a new one on it
/// (AttachmentsFieldMask), and the pair when they change a text (ValueFieldMask).
class ValuePair final : public ConcreteContainer<ValuePair, Attachment>
{
public:
    static constexpr unsigned ValueFieldNumber = Attachment::NextFieldNumber;
    static constexpr unsigned NextFieldNumber = ValueFieldNumber + 1;
    static constexpr FieldMask ValueFieldMask = FieldMask::bit(ValueFieldNumber);

    /// Key and text, ascending by the bytes of the key, whatever the order of the writes.
    using Entries = std::map<std::string, std::string>;

    static FieldContainerType& getClassType();

    /// The pair of a node; NullFC for a null node and for one without.
    static ValuePairPtr find(const Ptr<AttachmentContainer>& node);

    /// Fills `value` and returns true if the key is there, else leaves `value` alone.
    bool get(const std::string& key, std::string& value) const;
    /// Makes the key or replaces its text.
    void set(const std::string& key, const std::string& value);
    /// Does nothing if the key isn't there.
    void del(const std::string& key);

    /// All of them, for a walk. Good until the next set or del.
    [[nodiscard]] const Entries& entries() const { return _entries; }

private:
    friend ConcreteContainer<ValuePair, Attachment>;
    ValuePair() = default;
    ValuePair(const ValuePair&) = default;

    static void writeEntries(const FieldContainer& container, BinaryChecksumHandler& handler);

    Entries _entries;
};

} // namespace osg
