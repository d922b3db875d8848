#pragma once

#include <QSplitter>
#include <QWidget>

#include "services/services.h"

/** Where forms stand on the screen, kept in the settings in twips. */
namespace rws {

/** Twips of a logical pixel. */
inline constexpr int kTwipsPerPixel = 15;

/** Stores a form's place, frame included, under its name; of a maximised or minimised form the
   place that it goes back to. */
void SaveFormPos(const Services& services, const QWidget& form);
/** Puts a form where it stood; in the middle of the screen if that place adds up to a negative
   number or lies on no screen. Without a stored place it stays where it is. */
void LoadFormPos(const Services& services, QWidget& form);
void CenterForm(QWidget& form);

/** The width and height that the window frame adds to a form; before the form is shown, what it
    adds to the parent's window. */
QSize FrameExtent(const QWidget& form);
/** Stores a form's size, frame included, and its place; as `SaveFormPos` where maximised. */
void SaveFormPlace(const Services& services, const QWidget& form);
/** Gives a form the size that it had, at most that of the screen, and then puts it where it stood.
    What is not stored stays as it is. */
void LoadFormPlace(const Services& services, QWidget& form);

/** Stores the size of a main window, without its frame, which is not known before it is shown, and
    whether it is maximised. */
void SaveWindowSize(const Services& services, const QWidget& window);
/** Gives a main window that size, at most that of the screen. */
void LoadWindowSize(const Services& services, QWidget& window);
/** Maximises a main window that was; to be called when it has its size and place. */
void LoadMaximized(const Services& services, QWidget& window);

/** How a splitter of two sides is divided. */
void SaveSplitter(const Services& services, const QSplitter& splitter);
void LoadSplitter(const Services& services, QSplitter& splitter);

}  // namespace rws
