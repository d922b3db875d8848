#pragma once

#include <QPainter>
#include <QSize>
#include <functional>
#include <string>

#include "services/services.h"

/** The map as a picture for other programs. Files are whole or as they were: what is to be written
    is made in memory first. Failures are faults that name the file and the reason. */
namespace rws {

/** Paints the map into a picture of so many pixels; the painter may be scaled to more of them, and
    its font is set. */
using PaintMapInto = std::function<void(QPainter& painter, QSize size)>;

enum class PictureSize { AsShown, Twice, Wide };
inline constexpr int kWidePicture = 4096;

/** How large a picture of a view is. All of it is larger then, letters and lines too. */
QSize SizeOfPicture(PictureSize size, QSize shown);

/** More than 16384 pixels a side, or 100 million in all, or none, is a fault. */
QImage PictureOf(const PaintMapInto& paint, QSize shown, PictureSize size);

void SavePng(const Services& services, const std::string& path, const PaintMapInto& paint,
             QSize shown, PictureSize size);
/** Where `CanWriteSvg` says so. */
void SaveSvg(const Services& services, const std::string& path, const PaintMapInto& paint,
             QSize shown, const QString& title);
/** Puts the picture on the clipboard in place of what is there. */
void CopyPicture(const PaintMapInto& paint, QSize shown);

/** Asks for a file and writes it with one of the above; says so when that fails. The path, or ""
    when nothing was written. `baseName` is that of the mission, without an ending. */
std::string AskAndSave(const Services& services, const std::string& title,
                       const std::string& baseName, const std::string& filter,
                       const std::string& folder,
                       const std::function<void(const std::string& path)>& save);

}  // namespace rws
