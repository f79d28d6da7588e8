// How large a texture the open lets the engine keep: the user's cap as a
// power of two, lowered on a machine with little memory or an Intel GPU.
#pragma once

#include <QString>

struct TextureLimit {
    int exponent = 11;
    QString ResolutionRemark;
    QString ResolutionReason;
    // True when the status text should warn in red (exponent 12 or 13).
    bool warn = false;
};

TextureLimit TextureLimitFor(int user_Max_Texture_Size, int MemoryGB, bool IntelGPU);

// The memory this machine has free now, in whole GiB.
int GetFreeMemoryEx();
