#pragma once

#include <algorithm>
#include <vector>

/// Brings the entries into ascending order and keeps each once.
template <class Value>
void sortAndDropRepeats(std::vector<Value>& values)
{
    std::sort(values.begin(), values.end());
    values.erase(std::unique(values.begin(), values.end()), values.end());
}
