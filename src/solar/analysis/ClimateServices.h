// Where the climate and address services live: section "Services" of
// Orvo.ini, so that a site can use a mirror or a geocoder it has a licence for.
#pragma once

#include <string>

// Key "PVGIS", the public PVGIS service by default.
std::string PvgisServiceAddress();
// Key "NASAPOWER", the public NASA POWER service by default.
std::string NasaPowerServiceAddress();
// Key "Geocoding", empty by default: the free public reverse geocoders
// forbid geocoding stored coordinates, so none is called unless one is set.
std::string GeocodingServiceAddress();

// The base address and the path with exactly one "/" between them.
std::string ServiceUrl(const std::string& base, const std::string& path);
