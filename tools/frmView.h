#pragma once

#include <QLabel>
#include <string>

#include "controls/dialog.h"

namespace rws {

/** A window that shows one picture, stretched over all of it. The caller gives file and caption. */
class frmView : public Dialog {
  Q_OBJECT

 public:
  frmView(const Services& services, QWidget* parent);

  /** Gives the window the size and place that it had and reads the picture. A picture that cannot
      be read is a fault. */
  void LoadForm();
  /** Stores size and place, however the window is closed. */
  void done(int result) override;

  /** Full path of the picture. */
  std::string FileName;
  QLabel* img;

 protected:
  void showEvent(QShowEvent* event) override;
  /** Some window systems tell the frame only with a move after the window is shown. */
  void moveEvent(QMoveEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;

 private:
  void SizeToForm();
};

/** Shows a picture file in a window of its own and returns when that is closed. A file that cannot
    be shown gives a message with the reason, and false. */
bool ViewImage(const Services& services, QWidget* parent, const std::string& path,
               const QString& caption);

}  // namespace rws
