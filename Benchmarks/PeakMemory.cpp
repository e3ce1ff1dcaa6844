#include "PeakMemory.h"

#include <fstream>
#include <malloc.h>
#include <string>

namespace bench
{

void resetPeakMemory()
{
    malloc_trim(0); // what earlier runs freed doesn't count
    std::ofstream("/proc/self/clear_refs") << "5";
}

double peakMemoryBytes()
{
    std::ifstream status("/proc/self/status");
    std::string key;
    while (status >> key) {
        if (key == "VmHWM:") {
            double kibibytes = 0.0;
            status >> kibibytes;
            return kibibytes * 1024.0;
        }
        std::getline(status, key);
    }
    return 0.0;
}

double usedMemoryBytes()
{
    const struct mallinfo2 use = mallinfo2();
    return static_cast<double>(use.uordblks + use.hblkhd);
}

} // namespace bench
