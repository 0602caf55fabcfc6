// The plot's tools for a closer look and for reports: its context menu saves
// the plot to a PNG, SVG or PDF file, copies it to the clipboard or shows the
// whole of it again; a left drag pans it (Qwt's panner) and the wheel zooms
// around the cursor (Qwt's magnifier would zoom around the middle).

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QImage>
#include <QMessageBox>
#include <QPainter>
#include <QRadioButton>
#include <QStandardPaths>
#include <qwt_plot.h>
#include <qwt_plot_canvas.h>
#include <qwt_plot_panner.h>
#include <qwt_plot_renderer.h>
#include <qwt_scale_map.h>

#include "app/ui_widget.h"
#include "app/widget.h"

namespace {

// Files and copies are drawn at twice the resolution of a 96 DPI screen, so a
// picture is twice the plot's size on screen, in pixels or in millimetres.
constexpr int kResolution = 192;

// The plot as a report shows it: on white, without the canvas frame.
void setUpForReports(QwtPlotRenderer& renderer) {
    renderer.setDiscardFlag(QwtPlotRenderer::DiscardBackground);
    renderer.setDiscardFlag(QwtPlotRenderer::DiscardCanvasFrame);
}

QSizeF sizeInMillimetres(const QWidget* widget) {
    return QSizeF(widget->size()) * (25.4 / 96.0);
}

}  // namespace

void Widget::setUpPlotTools() {
    QwtPlot* plot = ui->plot;
    new QwtPlotPanner(plot->canvas());
    plot->setContextMenuPolicy(Qt::ActionsContextMenu);
    const auto addAction = [plot](const char* name, const QString& text, auto run) {
        auto* action = new QAction(text, plot);
        action->setObjectName(QString::fromLatin1(name));
        connect(action, &QAction::triggered, plot, run);
        plot->addAction(action);
    };
    addAction("actionSavePlot", tr("Сохранить график…"), [this] { savePlot(); });
    addAction("actionCopyPlot", tr("Копировать график"), [this] {
        QImage image((QSizeF(ui->plot->size()) * (kResolution / 96.0)).toSize(), QImage::Format_ARGB32);
        image.fill(Qt::white);
        QPainter painter(&image);
        QwtPlotRenderer renderer;
        setUpForReports(renderer);
        renderer.render(ui->plot, &painter, image.rect());
        painter.end();
        QApplication::clipboard()->setImage(image);
    });
    addAction("actionResetPlot", tr("Показать весь график"), [this] {
        showFullRange();
        ui->plot->replot();
    });
    const QString pictures = QStandardPaths::writableLocation(QStandardPaths::PicturesLocation);
    saveFolder = QDir(pictures).exists() ? pictures : QDir::homePath();
}

QString Widget::askSaveName(QFileDialog& dialog, const QString& proposed) {
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    // A name typed without an extension takes the chosen type's.
    const auto suffixOf = [](const QString& filter) {
        return filter.section(QStringLiteral("*."), 1).section(QLatin1Char(')'), 0, 0);
    };
    dialog.setDefaultSuffix(suffixOf(dialog.nameFilters().value(0)));
    connect(&dialog, &QFileDialog::filterSelected, &dialog,
            [&dialog, suffixOf](const QString& filter) { dialog.setDefaultSuffix(suffixOf(filter)); });
    dialog.selectFile(proposed);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return QString();
    const QString name = dialog.selectedFiles().first();
    saveFolder = QFileInfo(name).absolutePath();
    return name;
}

void Widget::savePlot() {
    const QRadioButton* const taskButtons[5] = {ui->checkInterpolation, ui->checkSpline, ui->checkMNK,
                                                ui->checkDifferentiation, ui->checkIntegration};
    QFileDialog dialog(this, tr("Сохранить график"), saveFolder,
                       tr("Изображение PNG (*.png);;Рисунок SVG (*.svg);;Документ PDF (*.pdf)"));
    const QString name = askSaveName(dialog, taskButtons[task]->text() + QStringLiteral(".png"));
    if (name.isEmpty()) return;

    // Qwt's renderer writes by the name's extension and reports nothing: the
    // file is opened here first for the reason of a failure, and an empty file
    // afterwards means a type it cannot write.
    QFile file(name);
    QString reason;
    if (!file.open(QIODevice::WriteOnly)) reason = file.errorString();
    file.close();
    if (reason.isEmpty()) {
        QwtPlotRenderer renderer;
        setUpForReports(renderer);
        renderer.renderDocument(ui->plot, name, sizeInMillimetres(ui->plot), kResolution);
        if (QFileInfo(name).size() == 0) reason = tr("такой тип файла не поддерживается");
    }
    if (!reason.isEmpty())
        QMessageBox::information(nullptr, tr("Ошибка"), tr("Не удалось сохранить график в файл %1: %2").arg(name, reason));
}

void Widget::zoomPlot(const QPoint& at, double factor) {
    // Each scale shrinks or grows around the value under the cursor, which so
    // stays where it is.
    for (int axis : {QwtPlot::xBottom, QwtPlot::yLeft}) {
        const QwtScaleMap map = ui->plot->canvasMap(axis);
        const double fixed = map.invTransform(axis == QwtPlot::xBottom ? at.x() : at.y());
        ui->plot->setAxisScale(axis, fixed + (map.s1() - fixed) * factor, fixed + (map.s2() - fixed) * factor);
    }
    ui->plot->replot();
}

void Widget::showFullRange() {
    // The start-up scale, kept while no curve is attached; autoscaling takes
    // over as soon as one is.
    for (int axis : {QwtPlot::xBottom, QwtPlot::yLeft}) {
        ui->plot->setAxisScale(axis, 0.0, 1000.0);
        ui->plot->setAxisAutoScale(axis, true);
    }
}

