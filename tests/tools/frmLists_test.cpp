#include "tools/frmLists.h"

#include "platform/qt_text.h"
#include "tests/support/form_test.h"

namespace rws::test {
namespace {

struct ListsForm : FormTest<frmLists> {
  ListsForm() {
    W.Doc.GamePath = Box.Path("game");
    for (const char* folder : {"game/#DBW/a", "game/#UP#/b"}) Box.MakeFolder(folder);
    KeptLists kept;
    kept.Lists.Sources = {{"aircraft", "air.ini", 6012}, {"maps", "all.ini", 3}};
    kept.Lists.Troubles = {{"air.ini", 17, "Not an aircraft."}};
    Read.Kept = std::make_shared<const KeptLists>(kept);
  }
  void Show(const NameChoices& choices) {
    Open([&](frmLists& form) {
      form.Choices = choices;
      form.Names.Troubles = {"no permission"};
      form.Use = [this](const NameChoices& chosen, ReadLists how) {
        Used.push_back(std::string(how == ReadLists::Anew ? "anew " : "") +
                       (chosen.UseLists ? "on " : "off ") + chosen.Pack + " " + chosen.Language +
                       (chosen.UnlistedFlyable ? " flyable" : ""));
        if (Fails) throw Fault(70, "the settings are write-protected");
        return Read;
      };
    });
  }
  static std::string Row(const QAbstractItemModel& model, int row) {
    std::vector<std::string> cells;
    for (int i = 0; i < 3; ++i) cells.push_back(ToPath(model.index(row, i).data().toString()));
    return Joined(cells);
  }

  GameNames Read;
  std::vector<std::string> Used;
  bool Fails = false;
};

TEST_F(ListsForm, TakesChoicesOverByReadAgainAndByOk) {
  Box.Write("RWS_Own.txt", "[map x]\nname=X\nodd\n");
  Show({true, "#OLD", "xx", true});
  EXPECT_EQ(ToPath(Form->lblOwn->text()),
            "Added by you: 0 aircraft and 1 map, in " + Box.Path("RWS_Own.txt"));
  EXPECT_EQ(Row(Form->Troubles, 1), "No line of an entry: odd|3|" + Box.Path("RWS_Own.txt"));
  EXPECT_EQ(Form->cboPack->currentText(), "Choose one of 2");
  EXPECT_EQ(Form->cboLanguage->currentText(), "xx") << "an unknown one stays";
  EXPECT_EQ(Row(Form->Troubles, 0), "no permission||");
  Form->cmd[frmLists::kOk]->click();
  EXPECT_TRUE(Used.empty() && Form->isHidden()) << "nothing was changed";
  Show({true, "#up#", "", true});
  EXPECT_EQ(Form->cboPack->currentText(), "#UP#");
  Form->cboPack->setCurrentText("#DBW");
  Form->cboLanguage->setCurrentText("German (de)");
  Form->cmd[frmLists::kReadAgain]->click();
  EXPECT_TRUE(Form->isVisible());
  EXPECT_EQ(Row(Form->Sources, 0), "aircraft|6,012|air.ini");
  EXPECT_EQ(Row(Form->Troubles, 0), "Not an aircraft.|17|air.ini");
  Form->chkFlyable->click();
  Form->chkUse->click();
  EXPECT_FALSE(Form->cboPack->isEnabled() || Form->chkFlyable->isEnabled());
  Form->cmd[frmLists::kOk]->click();
  EXPECT_TRUE(Form->isHidden());
  EXPECT_EQ(Joined(Used), "anew on #DBW de flyable|off #DBW de");
}

TEST_F(ListsForm, StaysOpenWhenTheChoicesCannotBeStored) {
  Show({});
  Form->chkUse->click();
  Fails = true;
  W.Script.Expect("the settings are write-protected");
  Form->cmd[frmLists::kOk]->click();
  EXPECT_TRUE(Form->isVisible() && Form->Choices.UseLists);
  Form->cmd[frmLists::kCancel]->click();
  EXPECT_EQ(Used.size(), 1u);
}

}  // namespace
}  // namespace rws::test
