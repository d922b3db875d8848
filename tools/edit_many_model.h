#pragma once

#include <QAbstractTableModel>
#include <vector>

#include "library/edit_many.h"
#include "services/code_page.h"

namespace rws {

/** The table of a plan: a row for each value that changes or cannot, and one for a mission without
    such. A row takes no memory but two numbers. */
class EditManyModel : public QAbstractTableModel {
  Q_OBJECT

 public:
  enum Column { kMission, kFlight, kField, kOld, kNew, kNote, kFolder, kColumns };
  enum Filter { kAll, kChanges, kLeftOut };

  EditManyModel(const CodePage& page, QObject* parent) : QAbstractTableModel(parent), page_(page) {}

  void SetPlan(EditPlan plan);
  const EditPlan& Plan() const { return plan_; }
  void SetFilter(Filter filter);
  /** Whether the missions of rows are to be written; only those that change. */
  void SetWanted(const QList<int>& rows, bool isWanted);
  bool IsWanted(int row) const;
  bool MayBeWanted(int row) const;

  struct Counts {
    std::size_t Changing = 0, Wanted = 0, LeftOut = 0, Partly = 0, Same = 0;
  };
  Counts Count() const;

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  bool setData(const QModelIndex& index, const QVariant& value, int role) override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;

 Q_SIGNALS:
  void WantedChanged();

 private:
  struct Row {
    std::uint32_t Mission, Value;
  };
  static constexpr std::uint32_t kNone = UINT32_MAX;
  void Fill();
  QString Text(const Row& row, int column) const;
  QString Note(const PlannedMission& mission, const PlannedValue* value) const;

  const CodePage& page_;
  EditPlan plan_;
  Filter filter_ = kAll;
  std::vector<Row> rows_;
};

}  // namespace rws
