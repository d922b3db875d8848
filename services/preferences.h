#pragma once

#include <cstdint>

namespace rws {

/** What happens to unsaved changes when a mission is left. */
enum SaveMode { kSaveAsk = 0, kSaveAlways = 1, kSaveNever = 2 };

inline constexpr int kMostBackupsKept = 9999;
inline constexpr int kMostStoreDays = 3650, kMostStoreMegabytes = 99999;

/** What the user has chosen for all missions. Colours are blue-green-red numbers. */
struct Preferences {
  bool bBackup = true;
  /** How many dated backups of a mission stay; 0 is all. */
  int BackupsKept = 0;
  /** How long, and how much, of deleted and replaced files is kept for Undo. */
  int StoreDays = 30, StoreMegabytes = 256;
  int SavePromptMode = kSaveAsk;
  bool bLockWT = false;
  bool bSndPlayer = false;
  bool bAssociate = false;
  std::int32_t ForeColor = 0x800000;
  std::int32_t BackColor = 0xFFFFFF;
  /** Lists have the desktop's colours instead of these two. */
  bool bDesktopColors = false;
};

}  // namespace rws
