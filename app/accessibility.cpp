// The window as a screen reader presents it: a role for every container, a
// name in words for every input and result, a place for every cell, and a
// plot that says what it shows.

#include "app/accessibility.h"

#include <utility>

#include <QAbstractItemModel>
#include <QAccessible>
#include <QAccessibleWidget>
#include <QCoreApplication>
#include <QLabel>
#include <QLineEdit>
#include <QTableWidget>
#include <QTextDocumentFragment>
#include <qwt_plot.h>
#include <qwt_plot_canvas.h>
#include <qwt_text.h>

#include "app/ui_widget.h"
#include "app/widget.h"

namespace {

// Qt gives a plain QFrame the role "border", which its AT-SPI bridge exports
// as "frame": Orca takes that for a top-level window, and since it is never
// the active one, stays silent on every focus change inside it.
QAccessibleInterface* roleOf(const QString& className, QObject* object) {
    if (!object || !object->isWidgetType()) return nullptr;
    auto* widget = static_cast<QWidget*>(object);
    if (className == QLatin1String("QwtPlotCanvas")) return new QAccessibleWidget(widget, QAccessible::Chart);
    // Reached only for frames that no more specific class has claimed.
    if (className == QLatin1String("QFrame")) return new QAccessibleWidget(widget, QAccessible::Grouping);
    return nullptr;
}

}  // namespace

void installAccessibleRoles() {
    static const bool installed = [] {
        QAccessible::installFactory(roleOf);
        return true;
    }();
    (void)installed;
}

QString spokenLabel(const QString& labelText) {
    QString words = QTextDocumentFragment::fromHtml(labelText).toPlainText().trimmed();
    while (words.endsWith(QLatin1Char('=')) || words.endsWith(QLatin1Char(':'))) words = words.left(words.size() - 1).trimmed();
    return words;
}

QString cellPlace(const QModelIndex& index) {
    const QAbstractItemModel* model = index.model();
    if (!model) return QString();
    return QCoreApplication::translate("Widget", "%1, столбец %2")
        .arg(model->headerData(index.row(), Qt::Vertical).toString(),
             model->headerData(index.column(), Qt::Horizontal).toString());
}

void Widget::setUpAccessibility() {
    // Each frame is named after its title.
    const std::pair<QWidget*, QLabel*> frames[] = {{ui->frame, ui->label_task},   {ui->frame_2, ui->label_func},
                                                   {ui->frame_3, ui->label_parameters}, {ui->frame_4, ui->label_result},
                                                   {ui->frame_5, ui->label_error}};
    for (const auto& [frame, title] : frames) frame->setAccessibleName(title->text());
    ui->plot->canvas()->setAccessibleName(tr("График"));

    // A cell speaks its place with its value: the column headers alone are
    // bare numbers, and a screen reader moving along a row does not repeat
    // the row's header.
    QAbstractItemModel* cells = ui->tableFunc->model();
    connect(cells, &QAbstractItemModel::dataChanged, this,
            [this](const QModelIndex&, const QModelIndex&, const QVector<int>& roles) {
                if (roles != QVector<int>{Qt::AccessibleTextRole}) nameCells();
            });
    connect(cells, &QAbstractItemModel::headerDataChanged, this, [this] { nameCells(); });
}

void Widget::nameControls() {
    const std::pair<QLabel*, QWidget*> labelled[] = {
        {ui->label_x1, ui->x1},     {ui->label_x2, ui->x2},       {ui->label_h1, ui->h1},
        {ui->label_h2, ui->h2},     {ui->label_f, ui->exprFunc},  {ui->label_n, ui->n},
        {ui->label_func, ui->tableFunc}, {ui->label_res1, ui->res1}, {ui->label_res2, ui->res2},
        {ui->label_eps1, ui->eps1}, {ui->label_eps2, ui->eps2}};
    // Names rather than buddies: a screen reader reads a buddy label's text
    // as it stands, " = " and markup included.
    for (const auto& [label, field] : labelled) {
        field->setAccessibleName(spokenLabel(label->text()));
        field->setAccessibleDescription(label->toolTip());
    }
}

void Widget::nameCells() {
    QTableWidget* table = ui->tableFunc;
    for (int r = 0; r < table->rowCount(); ++r) {
        for (int c = 0; c < table->columnCount(); ++c) {
            QTableWidgetItem* item = table->item(r, c);
            if (!item) continue;
            // The value as the cell shows it.
            const QString value = table->locale().toString(item->data(Qt::DisplayRole).toDouble());
            item->setData(Qt::AccessibleTextRole, tr("%1: %2").arg(cellPlace(table->model()->index(r, c)), value));
        }
    }
}

void Widget::describePlot() {
    QStringList titles;
    QRectF extent;
    for (const QwtPlotCurve& curve : curves) {
        if (curve.plot() != ui->plot) continue;
        titles << curve.title().text();
        extent |= curve.boundingRect();
    }
    const QLocale& numbers = locale();
    ui->plot->canvas()->setAccessibleDescription(
        titles.isEmpty() ? tr("нет кривых")
                         : tr("%1 на отрезке [%2; %3]")
                               .arg(titles.join(QStringLiteral(", ")), numbers.toString(extent.left(), 'g', 6),
                                    numbers.toString(extent.right(), 'g', 6)));
}
