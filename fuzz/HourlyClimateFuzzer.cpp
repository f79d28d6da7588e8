// The folded hourly climate file "PVGIST_H.csv" as the energy model reads
// it: the list, its hour index and look-ups of a few hours.
#include <cstdint>

#include "FuzzSupport.h"
#include "solar/analysis/ClimateIrradianceLookup.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string path = zvfuzz::writeFile("PVGIST_H.csv", data, size);
    const HourIrradianceIndex index(LoadHourlyClimateList(path));
    for (const char* date : {"2023-01-01", "2023-06-21", "2024-02-29", "2023-12-31"})
        for (const char* time : {"00:00", "09:00", "12:30", "23:00"}) GetRealIrradianceForTime(date, time, index);
    return 0;
}
