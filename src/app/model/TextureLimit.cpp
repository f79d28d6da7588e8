#include "TextureLimit.h"

#include <fstream>
#include <string>

TextureLimit TextureLimitFor(int user_Max_Texture_Size, int MemoryGB, bool IntelGPU) {
    TextureLimit limit;
    for (int edge = 4096; edge <= 32768 && user_Max_Texture_Size >= edge; edge *= 2) ++limit.exponent;
    if (MemoryGB <= 4) {
        limit.exponent = 12;
        limit.ResolutionRemark = "Resolution reduced to 4096X4096\n";
        limit.ResolutionReason = "Not enough memory";
    }
    if (IntelGPU) {
        limit.exponent = 12;
        limit.ResolutionRemark = "Resolution reduced to 4096X4096\n";
        limit.ResolutionReason += "No NVIDIA GPU";
    }
    limit.warn = limit.exponent == 12 || limit.exponent == 13;
    return limit;
}

int GetFreeMemoryEx() {
    std::ifstream in("/proc/meminfo");
    std::string key;
    long long kib = 0;
    std::string unit;
    while (in >> key >> kib >> unit)
        if (key == "MemAvailable:") return static_cast<int>(kib / (1024 * 1024));
    return 0;
}
