#pragma once

#include <QPalette>
#include <QString>
#include <string>

namespace rws {

/** Settles what Qt reads when the application object is made: how fonts are drawn, and whether
    frames and colours are dark. Nothing where the desktop tells Qt itself. */
void PrepareStart();
/** After the application object is made: a style that can be dark, where the system is and its own
    style cannot be, and a font that is there. */
void ChooseLook();

/** Dark colours for a style that takes its own from the palette. */
QPalette DarkPalette();

/** The whole command line behind the program's name: on Windows the raw text, elsewhere the
    arguments, joined by one blank. */
std::string CommandLine(int argc, char** argv);
/** `commandLine` without the program's name before it, which may be quoted or, as `program` is
    spelled, have blanks in it. */
QString BehindProgram(const QString& commandLine, const QString& program);

/** Prints for somebody at a terminal; false if that failed. A program with a window has no output
    of its own on Windows: there it is the terminal that started it, if one did. */
bool Print(const std::string& text);

}  // namespace rws
