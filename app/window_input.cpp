// Keyboard and wheel input that the window's widgets do not handle as a user
// expects: the table's Tab walk, either decimal separator and whole-value
// typing in every spin box, and zooming the plot around the cursor.

#include <QAbstractSpinBox>
#include <QDoubleSpinBox>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QTableWidget>
#include <QWheelEvent>
#include <cmath>
#include <qwt_plot.h>
#include <qwt_plot_canvas.h>

#include "app/ui_widget.h"
#include "app/widget.h"

bool Widget::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Wheel && watched == ui->plot->canvas()) {
        auto* wheel = static_cast<QWheelEvent*>(event);
        // One notch (120) of the wheel away from the user shows 90 % of the range.
        zoomPlot(wheel->position().toPoint(), std::pow(0.9, wheel->angleDelta().y() / 120.0));
        return true;
    }
    if (event->type() == QEvent::FocusIn) {
        const Qt::FocusReason reason = static_cast<QFocusEvent*>(event)->reason();
        if (reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason) tabbedInto(watched, reason == Qt::TabFocusReason);
        return false;
    }
    auto* widget = qobject_cast<QWidget*>(watched);
    if (event->type() != QEvent::KeyPress || !widget || !isAncestorOf(widget)) return false;
    auto* key = static_cast<QKeyEvent*>(event);
    if (keyCommand(widget, *key)) return true;

    // Tab walks the table's cells (and their editors) but would wrap round
    // them for ever: past the last cell (or, backwards, the first) it goes on
    // along the window's chain. Taking the focus from an open editor commits it.
    QTableWidget* table = ui->tableFunc;
    const bool forward = key->key() == Qt::Key_Tab;
    if ((forward || key->key() == Qt::Key_Backtab) && !(key->modifiers() & Qt::ControlModifier) &&
        (widget == table || table->isAncestorOf(widget))) {
        const QModelIndex end = forward ? table->model()->index(table->rowCount() - 1, table->columnCount() - 1)
                                        : table->model()->index(0, 0);
        if (table->currentIndex() != end) return false;
        table->setFocus();
        focusNextPrevChild(forward);
        return true;
    }

    auto* box = qobject_cast<QAbstractSpinBox*>(widget);
    const QString text = key->text();
    if (!box || text.isEmpty() || !text.at(0).isPrint()) return false;
    // Either of "." and "," is the decimal separator of the box's locale.
    const QChar decimal = box->locale().decimalPoint();
    if ((text == QLatin1String(".") || text == QLatin1String(",")) && text != decimal &&
        qobject_cast<QDoubleSpinBox*>(box)) {
        QKeyEvent separator(QEvent::KeyPress, decimal == QLatin1Char(',') ? Qt::Key_Comma : Qt::Key_Period,
                            key->modifiers(), QString(decimal));
        QCoreApplication::sendEvent(box, &separator);
        return true;
    }
    const QLineEdit* line = box->findChild<QLineEdit*>();
    if (line && !line->isModified() && !line->hasSelectedText()) box->selectAll();
    return false;
}
