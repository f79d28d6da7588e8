// The controls of the form "Solar Panels": their texts, hints, limits and
// defaults, in one place so the form and its rules agree.
#pragma once

namespace panelform {

// A number field: it refuses a value beyond its limits and shows it in colour.
struct FloatEditField {
    const char* label;    // UTF-8
    const char* hint;     // "" for none
    double maxValue;      // 0 for no upper limit
    bool isSigned;
    int decimals;
    double defaultValue;
};

inline constexpr const char* kFormCaption = "Solar Panels";
inline constexpr int kPanelsColumns = 3;

inline constexpr const char* kLandscapeText = "Landscape";

inline constexpr FloatEditField kTiltEdit{"Tilt (\xC2\xB0)", "Tilt relative to horizontal  (degrees)", 90, false, 2, 0.0};
inline constexpr FloatEditField kLiftEdit{"Lift (m)", "", 90, true, 2, 0.20};
inline constexpr FloatEditField kRowsGapEdit{"Rows gap", "Overrules the calsulated gap. Click to get suggestion.", 0, false,
                                            2, 0.0};

inline constexpr const char* kRoofTypeCaption = "Roof type";
inline constexpr const char* kRoofTypeItems[] = {"RED_TILE", "WHITE_FLAT "};
inline constexpr int kRoofTypeDefault = 0;
inline constexpr int kRoofTiled = 0;

inline constexpr const char* kRowsPairingCaption = "Rows pairing";
inline constexpr const char* kRowsPairingItems[] = {"Single", "Single rows", "Double Rows"};
inline constexpr const char* kRowsPairingHint = "Only single row if Landscape";
inline constexpr int kRowsPairingDefault = 2;
inline constexpr int kRowsPairingSingle = 0;

inline constexpr const char* kGapHelpText = "&Help";
inline constexpr const char* kGapHelpHint = "Show recommended value";

inline constexpr const char* kOkText = "OK";
inline constexpr const char* kCancelText = "Cancel";

}  // namespace panelform
