// The site's address line for the reports, from a reverse geocoding service.
#pragma once

#include <string>

// Asks the service set under "Geocoding" (Nominatim by default: once a
// second at most, each place once a session, a failed place again after a
// minute) for city, region and country; with the key set empty, "Unknown
// location" without a call. Each part found is
// followed by "\r, " (the line end of the list it was joined from stays in
// the text), so "Haifa\r, Haifa District\r, Israel\r, ". Country gets the
// country name or stays empty.
std::string GetLocationAddress(double lat, double lon, std::string& Country);

// The credit the service's terms ask for beside an address it gave:
// "Address data © OpenStreetMap contributors" for Nominatim, "" otherwise.
std::string GeocodingAttribution();

// A plain search, no JSON parser: up to 55 characters from 4 past the first
// occurrence of key (a quote, a colon, a blank and a quote assumed between),
// cut at the next double quote. Empty when the key is missing.
std::string ExtractJsonField(const std::string& json, const std::string& key);

// The string value of the first "key" : "value" pair, blanks allowed around
// the colon and backslash escapes taken as the character after them; empty
// when the key is missing or its value is no string.
std::string JsonStringField(const std::string& json, const std::string& key);
