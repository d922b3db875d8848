#pragma once

#include <QWidget>

#include "services/services.h"

/** Where forms stand on the screen, kept in the settings in twips. */
namespace rws {

/** Twips of a logical pixel. */
inline constexpr int kTwipsPerPixel = 15;

/** Stores a form's place under its name; of a maximised one the place that it goes back to. */
void SaveFormPos(const Services& services, const QWidget& form);
/** Puts a form where it stood; in the middle of the screen if that place adds up to a negative
   number or lies on no screen. Without a stored place it stays where it is. */
void LoadFormPos(const Services& services, QWidget& form);
void CenterForm(QWidget& form);

/** The width and height that the window frame adds to a form; before the form is shown, what it
    adds to the parent's window. */
QSize FrameExtent(const QWidget& form);
/** Stores a form's size, frame included, under its name; of a maximised one the size that it goes
   back to. */
void SaveFormSize(const Services& services, const QWidget& form);
/** Gives a form the size that it had, at most that of the screen. Without a stored size it stays as
    it is. To be called before `LoadFormPos`, which may put the form in the middle. */
void LoadFormSize(const Services& services, QWidget& form);

}  // namespace rws
