#pragma once

namespace rws {

/** The page in which this system keeps text that is no Unicode: Windows' own, elsewhere the one
   that goes with the language of the locale. */
int SystemCodePage();

}  // namespace rws
