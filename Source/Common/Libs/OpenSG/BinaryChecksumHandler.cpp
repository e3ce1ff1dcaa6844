#include "OpenSG/BinaryChecksumHandler.h"

#include "OpenSG/FieldContainer.h"

#include <vector>

namespace osg
{

void BinaryChecksumHandler::write(const void* data, std::size_t byteCount)
{
    const auto* bytes = static_cast<const unsigned char*>(data);
    std::uint64_t hash = _hash;
    for (std::size_t i = 0; i < byteCount; ++i)
        hash = (hash ^ bytes[i]) * Prime;
    _hash = hash;
    _empty = _empty && byteCount == 0;
}

void BinaryChecksumHandler::write(const FieldContainerPtr& container)
{
    if (container == NullFC)
        return;
    const FieldContainerType& type = container->getType();
    write(type.getName().c_str(), type.getName().size() + 1);
    for (unsigned i = 1; i <= type.getNumFieldDescs(); ++i) {
        const FieldDescription& field = *type.getFieldDesc(i);
        if (field.internal || field.name == "parents")
            continue;
        if (field.write)
            field.write(*container, *this);
        if (field.containers) {
            std::vector<FieldContainerPtr> held;
            field.containers(*container, held);
            for (const FieldContainerPtr& below : held)
                write(below);
        }
    }
}

std::uint64_t BinaryChecksumHandler::getValue() const
{
    if (_empty)
        return 0;
    return _hash == 0 ? Prime : _hash;
}

} // namespace osg
