#include "services/version.h"

namespace rws {

namespace {

constexpr char kProductDescription[] =
    "RWS Edit, a tuner for mission files of IL-2 Sturmovik: 1946";
constexpr char kLegalNotice[] =
    "Copyright (c) 2026 the authors of RWS Edit. Neither made nor supported by the makers of the "
    "game. Without any warranty.";

}  // namespace

std::string VersionText() { return RWS_VERSION; }

std::string AboutText() {
  return kProductDescription + std::string(" Version ") + VersionText() + "\n - " + kLegalNotice;
}

}  // namespace rws
