#pragma once

#include <QWidget>

#include "services/services.h"

/** Where forms stand on the screen, kept in the settings in twips: 15 to a logical pixel. */
namespace rws {

/** Stores a form's place under its name. */
void SaveFormPos(const Services& services, const QWidget& form);
/** Puts a form where it stood; in the middle of the screen if that place adds up to a negative
   number or lies on no screen. Without a stored place it stays where it is. */
void LoadFormPos(const Services& services, QWidget& form);
void CenterForm(QWidget& form);

}  // namespace rws
