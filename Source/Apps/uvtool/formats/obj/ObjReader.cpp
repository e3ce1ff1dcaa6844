#include "formats/obj/ObjFormat.h"

#include "document/FileError.h"

namespace uvtool
{
Document readObj(const std::filesystem::path&)
{
    return {};
}
void writeObj(const Document&, const std::filesystem::path&) {}
} // namespace uvtool
