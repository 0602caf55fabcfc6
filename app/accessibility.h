#pragma once
// What a screen reader needs from the window beyond what Qt's widgets give it
// on their own: roles that keep the form's frames from posing as windows, and
// names in words for the controls whose label is a separate, sometimes
// rich-text, widget. The window's own part (which name goes to which control)
// is in Widget; these are the pieces it shares with the cell editor.

#include <QString>

class QModelIndex;

// Makes every plain frame of the window (Qt's role "border", which AT-SPI
// clients take for a window of its own) a grouping, and the plot's canvas a
// chart. Installed once per process; call it before the window's widgets exist.
void installAccessibleRoles();

// A label's text as a screen reader should say it: markup dropped, subscripts
// run into the text ("x1"), the trailing " = " or ":" cut ("X* = " is "X*").
QString spokenLabel(const QString& labelText);

// Where a cell of the table of points lies, in words: its row header and
// its column, for example "f(x), столбец 2".
QString cellPlace(const QModelIndex& index);
