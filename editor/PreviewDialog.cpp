#include "editor/PreviewDialog.h"

#include "editor/EditorWidgets.h"
#include "engine/preview/TaskPreview.h"
#include "taskdef/TaskError.h"
#include "taskdef/TaskPageSettings.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QFontDatabase>
#include <QHeaderView>
#include <QTableWidget>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace morlevant {

namespace {

QString text(const std::string& utf8) {
    return QString::fromStdString(utf8);
}

// Source and result rows side by side, each with its row number; a changed row is marked in
// its own column (read out by screen readers) and shaded.
QTableWidget* rowsSideBySide(const TaskPreview& preview) {
    const std::vector<std::string>& source = preview.source.rows;
    const std::vector<std::string>& result = preview.result.rows;
    const int rows = static_cast<int>(std::max(source.size(), result.size()));
    auto* table = named<QTableWidget>(QStringLiteral("previewRows"), rows, 5);
    table->setAccessibleName(QStringLiteral("Source and result rows"));
    table->setHorizontalHeaderLabels({QStringLiteral("Row"), QStringLiteral("Source"),
                                      QStringLiteral("Row"), QStringLiteral("Result"),
                                      QStringLiteral("Changed")});
    table->verticalHeader()->hide();
    table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    const QColor shade = table->palette().color(QPalette::Highlight).lighter(180);
    // Rows in the viewer's fixed font, so that columns line up as a page counts them.
    const QFont fixed = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    for (int row = 0; row < rows; ++row) {
        const auto index = static_cast<std::size_t>(row);
        const bool inSource = index < source.size();
        const bool inResult = index < result.size();
        const bool changed = !inSource || !inResult || source[index] != result[index];
        const QString number = QString::number(row + 1);
        const QString cells[] = {
            inSource ? number : QString(), inSource ? text(source[index]) : QString(),
            inResult ? number : QString(), inResult ? text(result[index]) : QString(),
            changed ? QStringLiteral("changed") : QString()};
        for (int column = 0; column < 5; ++column) {
            auto* item = new QTableWidgetItem(cells[column]);
            if (column == 1 || column == 3)
                item->setFont(fixed);
            if (changed)
                item->setBackground(shade);
            table->setItem(row, column, item);
        }
    }
    table->resizeColumnsToContents();
    table->horizontalHeader()->setStretchLastSection(true);
    return table;
}

// Files with their row counts, each opening onto its first rows.
QTreeWidget* filesAndRows(const std::vector<PreviewFile>& files) {
    auto* tree = named<QTreeWidget>(QStringLiteral("previewFiles"));
    tree->setAccessibleName(QStringLiteral("Files and their first rows"));
    tree->setHeaderLabels({QStringLiteral("File"), QStringLiteral("Rows")});
    for (const PreviewFile& file : files) {
        auto* item = new QTreeWidgetItem(tree, {text(file.name), QString::number(file.rowCount)});
        for (std::size_t row = 0; row < file.rows.size(); ++row)
            new QTreeWidgetItem(item, {text(file.rows[row]), QString::number(row + 1)});
    }
    tree->expandAll();
    tree->resizeColumnToContents(0);
    return tree;
}

QString summaryOf(const TaskPreview& preview, const QString& file) {
    const QString sample = QStringLiteral("the first %1 rows of %2").arg(previewRows).arg(file);
    if (preview.error)
        return QStringLiteral("The run would stop on %1:\n%2").arg(sample, text(*preview.error));
    switch (preview.kind) {
    case TaskPreview::Kind::Lines:
        return QStringLiteral("On %1, %2 of %3 rows change.")
            .arg(sample)
            .arg(preview.changedRows())
            .arg(preview.source.rows.size());
    case TaskPreview::Kind::Pieces:
        return QStringLiteral("Divided, %1 make %2 pieces in %3.")
            .arg(sample)
            .arg(preview.files.size())
            .arg(text(preview.divideFolder));
    case TaskPreview::Kind::Merge:
        return QStringLiteral("Merged in list order, the first %1 rows of each of the task's %2 "
                              "files give %3 rows.")
            .arg(previewRows)
            .arg(preview.files.size())
            .arg(preview.result.rowCount);
    case TaskPreview::Kind::Nothing:
        break;
    }
    return QStringLiteral("This task changes nothing in %1: what it chooses does nothing in "
                          "its range mode.")
        .arg(file);
}

} // namespace

QDialog* showTaskPreview(QWidget* parent, const TaskPageSettings& settings,
                         const std::vector<std::string>& files, const std::string& file) {
    const TaskPreview preview = previewTask(settings, files, file, previewRows);
    auto* dialog = new QDialog(parent);
    dialog->setObjectName(QStringLiteral("frmPreview"));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setWindowTitle(QStringLiteral("Preview - ") + text(preview.file));
    auto* layout = new QVBoxLayout(dialog);
    auto* summary =
        plainLabel(summaryOf(preview, text(preview.file)), QStringLiteral("previewSummary"));
    summary->setWordWrap(true);
    layout->addWidget(summary);
    if (!preview.messages.empty()) {
        QStringList shown;
        for (const std::string& message : preview.messages)
            shown.append(text(message));
        layout->addWidget(
            plainLabel(QStringLiteral("The run would show %1 message(s): ").arg(shown.size()) +
                           shown.join(QStringLiteral(", ")),
                       QStringLiteral("previewMessages")));
    }
    if (!preview.error) {
        if (preview.kind == TaskPreview::Kind::Lines)
            layout->addWidget(rowsSideBySide(preview), 1);
        if (preview.kind == TaskPreview::Kind::Pieces)
            layout->addWidget(filesAndRows(preview.files), 1);
        if (preview.kind == TaskPreview::Kind::Merge) {
            std::vector<PreviewFile> shown = preview.files;
            shown.push_back(preview.result);
            layout->addWidget(filesAndRows(shown), 1);
        }
    }
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    QObject::connect(buttons, &QDialogButtonBox::rejected, dialog, &QDialog::close);
    layout->addWidget(buttons);
    dialog->resize(dialog->sizeHint().expandedTo(QSize(760, 480)));
    dialog->show();
    return dialog;
}

} // namespace morlevant
