#pragma once
// The window's language. It is written in Russian; a translation (Qt
// Linguist's .qm files, built into the program) turns it into another
// language, with Qt's own translation of its standard buttons and dialogs.

#include <QString>
#include <QStringList>

// Installs into the application the translation of the first language in
// `uiLanguages` (most preferred first, as QLocale::uiLanguages gives them)
// that is Russian or has a translation; Russian, or no language with a
// translation, leaves the window as written. Returns the language installed
// ("en"), or an empty text. Call it before the window is built.
QString installTranslations(const QStringList& uiLanguages);
