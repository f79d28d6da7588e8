// The photographs beside a model, looked for at the end of its open. The
// oblique subsystem stands above the open, so it puts its search here: the
// window and the CLI install it, and the open runs it without linking it.
#pragma once

#include <functional>
#include <string>

struct ModelPhotoHooks {
    // Finds the oblique catalogues below the model, or else its OPK list,
    // and sets KamaOblique, KamaOPK, INDOOR and ShowObliques.
    std::function<void(const std::string& modelPath)> findPhotographs;
};

ModelPhotoHooks& modelPhotoHooks();
void resetModelPhotoHooks();

// The search of the installed hook. With none the model counts as one
// without a catalogue: INDOOR, and the help offers the indoor lookup.
void FindModelPhotographs(const std::string& modelPath);
