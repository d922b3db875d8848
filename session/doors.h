#pragma once

#include <cstddef>
#include <utility>

#include "services/error_log.h"
#include "session/journal.h"
#include "session/session.h"

/** Whatever writes a record goes through one of two doors: `Edit` for what the user changes, `Show`
    for what filling the controls writes. So all that must know of edits hears of each. */
namespace rws {

/** What the Update button makes of an edit. */
enum class Lighting {
  AtOnce,  // lit or dark by the comparison
  None     // as it is; the command compares later, or never
};

/** One kind of edit. */
struct EditKind {
  /** Its line in the log when it fails; null for one that fails without a line. */
  const char* Handler;
  /** What is edited, for the user. */
  const char* What;
  Lighting Lights = Lighting::AtOnce;
};

/** What listeners of a session are told, after it has happened. */
struct Change {
  /** Null when showing alone has written. */
  const EditKind* Kind;
  std::size_t Mission;
};

/** Compares the current mission with its shadow and sets `Modified` by that. Does nothing while
    controls are filled or the window is not up. */
void SetModify(Session& session);

/** Tells every listener. */
void Notify(Session& session, const EditKind* kind);

/** True if the mission on show is written by its edits alone. */
bool KeepsShownLines(const Session& session);

/** Marks what happens while it lives as showing. */
class Showing {
 public:
  explicit Showing(Session& session) : session_(session) { ++session_.Showing; }
  ~Showing() { --session_.Showing; }
  Showing(const Showing&) = delete;
  Showing& operator=(const Showing&) = delete;

 private:
  Session& session_;
};

/** The user changes records. A failure is logged and ends the change; what it wrote until then
    stays, and does not light Update. Within `Show` it is no edit: handlers that run while controls
    are filled write all the same, but to a mission whose lines are kept. An edit within an edit is
   part of it: listeners hear of the outer one, once. False if it failed. */
template <class Body>
bool Edit(Session& session, const EditKind& kind, Body&& change) {
  const auto whole = [&] {
    change();
    if (kind.Lights == Lighting::AtOnce) SetModify(session);
  };
  const bool shown = session.Showing > 0;
  // Showing must not change what is to stay as it is.
  if (shown && KeepsShownLines(session)) return true;
  ++session.Editing;
  bool done = false;
  {
    const Journaling journaling(session);
    done = kind.Handler ? LogAndLeave(session.Services, kind.Handler, whole) : ResumeNext(whole);
  }
  --session.Editing;
  // What an edit shows is a part of it.
  if (session.Editing == 0) Notify(session, shown ? nullptr : &kind);
  return done;
}

/** Fills controls from records; what their handlers write back is no edit. Faults pass through. */
template <class Body>
void Show(Session& session, Body&& fill) {
  const Showing showing(session);
  fill();
}

}  // namespace rws
