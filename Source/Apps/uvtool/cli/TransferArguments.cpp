#include "cli/TransferArguments.h"

#include "cli/NumberRange.h"
#include "document/Document.h"

#include <map>

namespace uvtool
{
namespace
{

const std::map<std::string, TransferMethod>& methodsByName()
{
    static const std::map<std::string, TransferMethod> methods{
        {"bvh", kyTransferGeoProperties::ClosestBVH},
        {"normal", kyTransferGeoProperties::AlongNormal},
        {"octree", kyTransferGeoProperties::ClosestOctree}};
    return methods;
}

} // namespace

void addTransferOptions(CLI::App& command, TransferOptions& transfer)
{
    command
        .add_option_function<std::string>(
            "--method",
            [&transfer](const std::string& name) { transfer.method = methodsByName().at(name); },
            "How the place of a vertex on the source is found: bvh, octree, normal")
        ->check(CLI::IsMember(methodsByName()))
        ->type_name("METHOD")
        ->default_str(nameOf(transfer.method));
    command.add_option("--slots", transfer.slots, "The UV slots to carry over, in place of --slot")
        ->delimiter(',')
        ->check(numberFrom<std::size_t>(0, slotCount - 1))
        ->type_name("N,N,...")
        ->excludes(command.get_option("--slot"));
    command
        .add_option("--source-geometry", transfer.geometry,
                    "Only this geometry of the source, counted from 0 as info lists them")
        ->check(numberFrom<std::size_t>(0));
    command.add_flag("--by-place", transfer.isByPlace,
                     "Take UVs from wherever a geometry lies, not from the one of its name");
}

std::string nameOf(TransferMethod method)
{
    for (const auto& [name, known] : methodsByName())
        if (known == method)
            return name;
    return {};
}

} // namespace uvtool
