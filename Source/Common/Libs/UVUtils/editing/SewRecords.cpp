#include "UVUtils/editing/SewRecords.h"

SewRecords collectSewRecords(const SewKeys& keys, std::span<const MergeRecord> borders,
                             const BorderVertices& vertices, EdgeSet* unsewable)
{
    constexpr unsigned int sidesOfOneSeam = 2;
    SewRecords result;
    result.useOfKey.resize(keys.keys.size());
    for (const unsigned int key : keys.numberOfSewEdge) {
        if (result.useOfKey[key] != 0)
            continue;
        const auto onKey = keys.bordersOfKey[key];
        result.useOfKey[key] = static_cast<unsigned int>(onKey.size());
        for (const unsigned int border : onKey) {
            const MergeRecord& record = borders[border];
            if (onKey.size() <= sidesOfOneSeam) {
                result.records.push_back(record);
                result.keyOfRecord.push_back(key);
            } else if (unsewable) {
                unsewable->emplace(vertices.idAt(record.end0), vertices.idAt(record.end1));
            }
        }
    }
    return result;
}

void blockFolds(const SewKeys& keys, std::size_t placeCount, SewRecords& sewRecords,
                EdgeSet* unsewable)
{
    constexpr std::size_t tooManyInteriors = 3;
    constexpr unsigned int blockedUse = 99;
    std::vector<char> isBlocked(placeCount); // [place] of a representative
    const auto block = [&](unsigned int key) {
        isBlocked[keys.keys[key].first] = 1;
        isBlocked[keys.keys[key].second] = 1;
        const auto interiors = keys.interiorsOfKey[key];
        if (unsewable)
            unsewable->insert(interiors.begin(), interiors.end());
    };
    for (const unsigned int key : sewRecords.keyOfRecord)
        if (!keys.interiorsOfKey[key].empty())
            block(key);
    for (unsigned int key = 0; key < keys.keys.size(); ++key)
        if (keys.interiorsOfKey[key].size() >= tooManyInteriors)
            block(key);
    for (const unsigned int key : sewRecords.keyOfRecord)
        if (isBlocked[keys.keys[key].first] || isBlocked[keys.keys[key].second])
            sewRecords.useOfKey[key] = blockedUse;
}
