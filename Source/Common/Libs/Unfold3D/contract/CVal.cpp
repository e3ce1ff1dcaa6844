#include "Unfold3D/contract/CVal.h"

#include <algorithm>

namespace NU3D
{

CVal::CVal(Content content) : content_(std::move(content)) {}
CVal::~CVal() = default;

void CVal::Add(const std::string& name, CRef value)
{
    enter({name, WithValue, std::move(value)});
}

void CVal::Add(const std::string& name)
{
    enter({name, NameOnly, {}});
}

void CVal::Enable(const std::string& name)
{
    enter({name, Enabled, {}});
}

bool CVal::Exists(const std::string& name) const
{
    return find(name) != nullptr;
}

CRef CVal::GetRef(const std::string& name) const
{
    const Entry* entry = find(name);
    return entry ? entry->value : CRef();
}

std::vector<int> CVal::GetInts(const std::string& name) const
{
    const CRef ref = GetRef(name);
    const auto* ints = ref ? ref->as<std::vector<int>>() : nullptr;
    return ints ? *ints : std::vector<int>();
}

std::vector<double> CVal::GetDoubles(const std::string& name) const
{
    const CRef ref = GetRef(name);
    const auto* doubles = ref ? ref->as<std::vector<double>>() : nullptr;
    return doubles ? *doubles : std::vector<double>();
}

void CVal::UpdateIfNeeded() {}

const CVal::Table& CVal::entries() const
{
    static const Table none;
    const Table* table = as<Table>();
    return table ? *table : none;
}

const CVal::Entry* CVal::find(std::string_view name) const
{
    const Table& table = entries();
    const auto it = std::find_if(table.begin(), table.end(),
                                 [&](const Entry& entry) { return entry.name == name; });
    return it == table.end() ? nullptr : &*it;
}

void CVal::enter(Entry entry)
{
    Table* table = std::get_if<Table>(&content_);
    if (!table)
        return;
    const auto it = std::find_if(table->begin(), table->end(),
                                 [&](const Entry& present) { return present.name == entry.name; });
    if (it == table->end())
        table->push_back(std::move(entry));
    else
        *it = std::move(entry);
}

} // namespace NU3D
