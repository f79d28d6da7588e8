// Values by hour of the year, looked up for every hour of every panel: the
// hours of the calendar sit in a flat table, and any other month, day and
// hour a damaged list may hold sits in a map beside it.
#pragma once

#include <map>
#include <tuple>
#include <vector>

template <class Value>
class HourTable {
public:
    HourTable() : values_(SLOTS), filled_(SLOTS, false) {}

    // The first value of an hour stays: later ones are ignored.
    void insertFirst(int month, int day, int hour, const Value& value) {
        const int at = slot(month, day, hour);
        if (at < 0) {
            elsewhere_.try_emplace(std::tuple{month, day, hour}, value);
        } else if (!filled_[static_cast<std::size_t>(at)]) {
            values_[static_cast<std::size_t>(at)] = value;
            filled_[static_cast<std::size_t>(at)] = true;
        }
    }

    // Null when the hour has no value.
    const Value* find(int month, int day, int hour) const {
        const int at = slot(month, day, hour);
        if (at >= 0) return filled_[static_cast<std::size_t>(at)] ? &values_[static_cast<std::size_t>(at)] : nullptr;
        const auto it = elsewhere_.find(std::tuple{month, day, hour});
        return it == elsewhere_.end() ? nullptr : &it->second;
    }

private:
    static constexpr int SLOTS = 12 * 31 * 24;

    static int slot(int month, int day, int hour) {
        if (month < 1 || month > 12 || day < 1 || day > 31 || hour < 0 || hour > 23) return -1;
        return ((month - 1) * 31 + (day - 1)) * 24 + hour;
    }

    std::vector<Value> values_;
    std::vector<bool> filled_;
    std::map<std::tuple<int, int, int>, Value> elsewhere_;
};
