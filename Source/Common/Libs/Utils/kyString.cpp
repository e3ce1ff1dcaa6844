#include "Utils/kyString.h"

std::string kyString::join(const std::vector<std::string>& strings, std::string_view separator,
                           bool skipEmpty)
{
    std::string joined;
    bool isFirst = true;
    for (const std::string& text : strings) {
        if (skipEmpty && text.empty())
            continue;
        if (!isFirst)
            joined += separator;
        joined += text;
        isFirst = false;
    }
    return joined;
}
