// The session's part of the settings file "Orvo.ini": read once at
// start-up, written by the menu items at once, since nothing is saved at exit.
#pragma once

#include <string>

// The texture cap's menu items, a radio group.
inline constexpr int TEXTURE_LIMITS[3] = {16384, 8192, 4096};

// Reads "Units", "Openallmodels", "ConfiguredForSolar", "Texture" and
// "EnergyLoss" in that order into the session and the menu's checks. The
// solar configuration is applied in any case, so the form always matches it.
void ReadSessionSettings();

// Writes one key and saves the file.
void WriteSessionSetting(const std::string& section, const std::string& key, const std::string& value);

// The menu items: each writes its key.
void SetTextureLimit(int size);
void Imperialunits1Click();
void Openallmodels1Click();
