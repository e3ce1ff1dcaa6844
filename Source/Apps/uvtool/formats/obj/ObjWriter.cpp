#include "formats/obj/ObjFormat.h"

#include "document/OutputFile.h"
#include "formats/obj/ObjRewrite.h"
#include "formats/obj/ObjText.h"
#include "formats/obj/PlainObj.h"

namespace uvtool
{

void writeObj(const Document& document, const std::filesystem::path& path)
{
    const auto* const payload = dynamic_cast<const ObjPayload*>(document.payload.get());
    OutputFile file(path);
    file.write(payload != nullptr ? rewriteObj(document, *payload) : plainObj(document));
    file.commit();
}

} // namespace uvtool
