#include <windows.h>

#include <QApplication>
#include <QDir>
#include <QFontDatabase>
#include <QFontInfo>
#include <QStringList>
#include <QStyleFactory>
#include <cstdio>

#include "platform/qt_text.h"
#include "platform/start.h"

namespace rws {

namespace {

bool RunsUnderWine() {
  const HMODULE system = ::GetModuleHandleW(L"ntdll.dll");
  return system && ::GetProcAddress(system, "wine_get_version");
}

bool HasHighContrast() {
  HIGHCONTRASTW contrast{};
  contrast.cbSize = sizeof(contrast);
  return ::SystemParametersInfoW(SPI_GETHIGHCONTRAST, sizeof(contrast), &contrast, 0) &&
         (contrast.dwFlags & HCF_HIGHCONTRASTON) != 0;
}

/** What the user chose for programs in the settings of Windows; high contrast goes before it. */
bool IsSystemDark() {
  DWORD light = 1, size = sizeof(light);
  ::RegGetValueW(HKEY_CURRENT_USER,
                 L"Software\\Microsoft\\Windows\\CurrentVersion\\Themes\\Personalize",
                 L"AppsUseLightTheme", RRF_RT_REG_DWORD, nullptr, &light, &size);
  return light == 0 && !HasHighContrast();
}

/** That of the system may be one that is not there; what Qt takes instead is the first by name. */
void ChooseFont() {
  if (QFontInfo(QApplication::font()).exactMatch()) return;
  const QStringList families = QFontDatabase::families();
  for (const char* name : {"Segoe UI", "Tahoma", "Arial", "Liberation Sans", "DejaVu Sans"}) {
    if (!families.contains(QLatin1String(name))) continue;
    QFont font = QApplication::font();
    font.setFamilies({QLatin1String(name)});
    return QApplication::setFont(font);
  }
}

}  // namespace

void PrepareStart() {
  if (qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) return;
  QStringList platform{QStringLiteral("windows")};
  // Wine draws the text of input fields invisible with the system's own fonts.
  if (RunsUnderWine()) platform << QStringLiteral("fontengine=freetype");
  if (IsSystemDark()) platform << QStringLiteral("darkmode=1");
  if (platform.size() > 1) qputenv("QT_QPA_PLATFORM", platform.join(QLatin1Char(':')).toLatin1());
}

void ChooseLook() {
  if (IsSystemDark()) {
    // The style of Windows has no dark colours in this version of Qt, and the palette that it has
    // for others fills empty check boxes.
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    QApplication::setPalette(DarkPalette());
  }
  // Last: a style brings fonts for menus and lists.
  if (RunsUnderWine()) ChooseFont();
}

std::string CommandLine(int, char**) {
  // The raw text: the arguments would have lost their quotes.
  const QString program = QDir::toNativeSeparators(QCoreApplication::applicationFilePath());
  return ToPath(BehindProgram(QString::fromWCharArray(::GetCommandLineW()), program));
}

bool Print(const std::string& text) {
  const bool isRedirected = ::GetFileType(::GetStdHandle(STD_OUTPUT_HANDLE)) != FILE_TYPE_UNKNOWN;
  if (!isRedirected &&
      (!::AttachConsole(ATTACH_PARENT_PROCESS) || !std::freopen("CONOUT$", "w", stdout)))
    return false;
  return std::fputs(text.c_str(), stdout) >= 0 && std::fflush(stdout) == 0;
}

}  // namespace rws
