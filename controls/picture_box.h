#pragma once

#include <QFrame>
#include <QImage>
#include <string>

namespace rws {

/** A frame that shows one picture as large as it can, without distorting it, or nothing. */
class PictureBox : public QFrame {
  Q_OBJECT

 public:
  explicit PictureBox(QWidget* parent = nullptr);

  void Show(const QImage& picture, std::string path);
  void Clear();
  bool IsEmpty() const { return picture_.isNull(); }
  /** Where the picture on show comes from; "" without one. */
  const std::string& Path() const { return path_; }
  /** The same picture lies at another place from now on. */
  void SetPath(std::string path) { path_ = std::move(path); }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QImage picture_;
  /** The picture in the size of the last painting. */
  QPixmap scaled_;
  std::string path_;
};

}  // namespace rws
