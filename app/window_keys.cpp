// The window by keyboard alone: one Tab chain through both pages, the
// standard keys for help, calculation and closing, and a key for everything
// the plot's mouse tools do.

#include <iterator>

#include <QApplication>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QPointer>
#include <QShortcut>
#include <QTabBar>
#include <QTableWidget>
#include <QTimer>
#include <QLineEdit>
#include <qwt_plot.h>
#include <qwt_plot_canvas.h>
#include <qwt_plot_panner.h>

#include "app/ui_widget.h"
#include "app/widget.h"

void Widget::setUpKeyboard() {
    auto* canvas = static_cast<QwtPlotCanvas*>(ui->plot->canvas());
    canvas->setFocusPolicy(Qt::StrongFocus);
    canvas->setFocusIndicator(QwtPlotCanvas::CanvasFocusIndicator);

    // The result page continues the input page's chain after the tab bar:
    // its fields, then the plot; Tab skips whatever the current page hides,
    // so each page has a chain of its own that runs through the tab bar.
    // Linking through the tab bar rather than the tab widget keeps Qt from
    // moving the whole page; each link moves only the widget it names.
    QWidget* const chain[] = {ui->closeButton, ui->tabWidget->tabBar(), ui->res1, ui->res2,
                              ui->eps1,        ui->eps2,                canvas};
    for (std::size_t i = 1; i < std::size(chain); ++i) setTabOrder(chain[i - 1], chain[i]);

    const auto onKeys = [this](QWidget* scope, const QKeySequence& keys, Qt::ShortcutContext context, auto run) {
        auto* shortcut = new QShortcut(keys, scope);
        shortcut->setContext(context);
        connect(shortcut, &QShortcut::activated, this, run);
    };
    onKeys(this, QKeySequence::HelpContents, Qt::WindowShortcut, [this] { ui->helpButton->click(); });
    // Desktops whose conventions give closing no key of its own (Windows's)
    // still get Ctrl+Q.
    const QKeySequence quit = QKeySequence(QKeySequence::Quit).isEmpty() ? QKeySequence(Qt::CTRL | Qt::Key_Q)
                                                                          : QKeySequence(QKeySequence::Quit);
    onKeys(this, quit, Qt::WindowShortcut, [this] { ui->closeButton->click(); });
    // Ctrl+Tab and Ctrl+Shift+Tab turn the page from anywhere, the table
    // (whose Tab walks its cells) included, and land on the tab bar.
    for (const auto& [keys, step] : {std::pair{QKeySequence::NextChild, 1}, std::pair{QKeySequence::PreviousChild, -1}}) {
        onKeys(this, keys, Qt::WindowShortcut, [this, step = step] {
            QTabWidget* pages = ui->tabWidget;
            pages->setCurrentIndex((pages->currentIndex() + step + pages->count()) % pages->count());
            pages->tabBar()->setFocus(Qt::TabFocusReason);
        });
    }
    // Ctrl with either Enter key; the keypad's matches once Qt drops its keypad modifier.
    for (const int enter : {Qt::Key_Return, Qt::Key_Enter})
        onKeys(ui->tab, QKeySequence(Qt::CTRL | enter), Qt::WidgetWithChildrenShortcut, [this] { calculateFromKeyboard(); });
}

void Widget::calculateFromKeyboard() {
    // A click on «Расчет» takes the focus, and so ends an open cell editor
    // and keeps what was typed into it; the keys do the same, then give the
    // focus back (to the table when it was in a cell editor, which is gone).
    const QPointer<QWidget> back = QApplication::focusWidget();
    ui->calcButton->setFocus(Qt::ShortcutFocusReason);
    ui->calcButton->click();
    QWidget* const next = back && back->isVisible() ? back.data() : ui->tableFunc;
    next->setFocus(Qt::ShortcutFocusReason);
}

void Widget::tabbedInto(QObject* target, bool forward) {
    QTableWidget* table = ui->tableFunc;
    if (target == table && table->rowCount() > 0 && table->columnCount() > 0) {
        // Tab enters the table at its first cell and Shift+Tab at its last,
        // so that a walk through the window visits every cell in turn. The
        // cell is made current once the table has the focus, so that a
        // screen reader announces it after the table, not before.
        const int row = forward ? 0 : table->rowCount() - 1, column = forward ? 0 : table->columnCount() - 1;
        QTimer::singleShot(0, table, [table, row, column] {
            table->selectionModel()->setCurrentIndex(QModelIndex(), QItemSelectionModel::NoUpdate);
            table->setCurrentCell(row, column);
        });
    }
    for (QLineEdit* result : {ui->res1, ui->res2, ui->eps1, ui->eps2}) {
        if (target != result) continue;
        // A result is selected whole, as a field entered by Tab is, but shown
        // from its start, where a long polynomial begins.
        QTimer::singleShot(0, result, [result] { result->setSelection(result->text().size(), -result->text().size()); });
    }
}

bool Widget::keyCommand(QWidget* target, const QKeyEvent& key) {
    // Shift+F10 opens the focused control's context menu, as the Menu key
    // does (on X11 the platform itself turns that key into the menu event).
    if (key.key() == Qt::Key_F10 && key.modifiers() == Qt::ShiftModifier) {
        const QPoint at = target->inputMethodQuery(Qt::ImCursorRectangle).toRect().center();
        QContextMenuEvent menu(QContextMenuEvent::Keyboard, at, target->mapToGlobal(at));
        QCoreApplication::sendEvent(target, &menu);
        return true;
    }
    if (target != ui->plot->canvas()) return false;

    const QRect area = target->contentsRect();
    if (key.matches(QKeySequence::ZoomIn) || key.matches(QKeySequence::ZoomOut)) {
        zoomPlot(area.center(), key.matches(QKeySequence::ZoomIn) ? 0.9 : 1 / 0.9);
        return true;
    }
    if (key.modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier)) return false;
    // "+" and "-" zoom around the middle by a wheel notch; "=" is "+" without Shift.
    switch (key.key()) {
    case Qt::Key_Plus:
    case Qt::Key_Equal:
        zoomPlot(area.center(), 0.9);
        return true;
    case Qt::Key_Minus:
        zoomPlot(area.center(), 1 / 0.9);
        return true;
    default:
        break;
    }
    // An arrow shows what lies that way, a tenth of the canvas at a time: the
    // picture moves the other way, as it does under a drag of Qwt's panner.
    const int dx = area.width() / 10, dy = area.height() / 10;
    const std::pair<int, QPoint> moves[] = {
        {Qt::Key_Left, {dx, 0}}, {Qt::Key_Right, {-dx, 0}}, {Qt::Key_Up, {0, dy}}, {Qt::Key_Down, {0, -dy}}};
    for (const auto& [arrow, by] : moves) {
        if (key.key() != arrow) continue;
        if (auto* panner = target->findChild<QwtPlotPanner*>())
            QMetaObject::invokeMethod(panner, "moveCanvas", Q_ARG(int, by.x()), Q_ARG(int, by.y()));
        return true;
    }
    return false;
}
