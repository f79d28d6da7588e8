// Where the climate and address services live: section "Services" of
// Orvo.ini, so that a site can use a mirror or a geocoder it has a licence for.
#pragma once

#include <string>

// Key "PVGIS", the public PVGIS service by default.
std::string PvgisServiceAddress();
// Key "NASAPOWER", the public NASA POWER service by default.
std::string NasaPowerServiceAddress();
// Key "Geocoding": OpenStreetMap's Nominatim by default; set empty, no
// address is asked for.
std::string GeocodingServiceAddress();
// Key "GeocodingApi": how the geocoder is asked, "nominatim" (the default:
// "/reverse?format=jsonv2&lat=..&lon=..") or "client" ("/data/reverse-geocode-client"
// answering "city", "locality", "principalSubdivision" and "countryName").
std::string GeocodingServiceApi();

// The base address and the path with exactly one "/" between them.
std::string ServiceUrl(const std::string& base, const std::string& path);
