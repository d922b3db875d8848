#pragma once

#include <cstddef>

#include "catalogues/catalogues.h"
#include "mission/document.h"
#include "services/services.h"

/** The images below "PaintSchemes" of the game directory, by name only. Waiting events run after
    each file, so that a long scan does not freeze the window. */
namespace rws {

/** Fills `Skins`, a row for each folder of "PaintSchemes\Skins", sorted without regard to case.
   Without that folder the program cannot run: it forgets the game directory and ends. A folder that
    cannot be read is logged and keeps "default" alone. */
void LoadPlaneSkins(Document& doc, Catalogues& catalogues, const Services& services);

/** Scans the folder of one row of `Skins` again. A row that does not exist is logged. */
void ReLoadSinglePlaneSkin(Catalogues& catalogues, const Services& services, std::ptrdiff_t row);

/** Fills `PilotSkins`; empty, logged, when their folder cannot be read. */
void LoadPilotSkins(const Document& doc, Catalogues& catalogues, const Services& services);

/** Fills `NoseArts`; empty, logged, when their folder cannot be read. */
void LoadNoseArt(const Document& doc, Catalogues& catalogues, const Services& services);

}  // namespace rws
