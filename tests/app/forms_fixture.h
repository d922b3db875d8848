#pragma once

#include <string>

#include "app/all_forms.h"
#include "catalogues/paint_schemes.h"
#include "map/forms/frmFlightTable.h"
#include "map/forms/frmMap.h"
#include "tests/mainwindow/flights_fixture.h"

namespace rws::test {

/** The main window with a fighter of a mission shown, and every dialog over it. */
class AllFormsTest : public FlightsTest {
 protected:
  AllFormsTest() {
    Box.Write("game/PaintSchemes/Skins/I-16/Red.bmp", "");
    QImage(8, 8, QImage::Format_RGB32)
        .save(QString::fromStdString(Box.Path("game/PaintSchemes/Skins/I-16/Red.bmp")));
    Box.Write("program/RWS Backup/a.mis.bak", "[MAIN]\r\n");
    LoadPlaneSkins(Doc(), Tables, World_.Services);
    Open();
    ClickFlight(kFighter);
  }

  /** Calls `check` with the main window and every dialog, shown and painted. */
  void ForEachForm(const std::function<void(QWidget&)>& check) {
    check(*Window);
    for (const auto& form : AllForms(World_, Window.get())) {
      SCOPED_TRACE(form.Name);
      const auto shown = form.Make();
      shown->show();
      EXPECT_EQ(shown->objectName().toStdString(), form.Name);
      check(*shown);
      if (auto* map = qobject_cast<frmMap*>(shown.get())) {
        map->mnuTable->trigger();
        check(*map->Table);
      }
    }
  }
};

}  // namespace rws::test
