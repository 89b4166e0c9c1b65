#include "workspace/WorkspaceFile.h"

#include "taskdef/TextLines.h"
#include "workspace/FileTypes.h"
#include "workspace/NodeTag.h"
#include "workspace/WorkspaceBytes.h"
#include "workspace/WorkspaceRecord.h"

#include <QDir>
#include <QHash>
#include <QSaveFile>
#include <vector>

namespace morlevant {

namespace {

// Image and selected image of the task an empty workspace file yields.
constexpr int emptyFileTaskImage = treeImage::archive;

bool isAbsoluteStoredPath(const QString& path) {
#ifdef Q_OS_WIN
    return path.contains(':');
#else
    return path.startsWith('/');
#endif
}

} // namespace

QByteArray WorkspaceFile::write(TaskTreeModel& model, const QString& taskDir) {
    if (model.rowCount() == 0)
        model.appendNode(nullptr, TaskTreeModel::defaultTaskCaption());
    // Keys are numbered afresh on every save, in the order of the nodes, so saving twice gives
    // the same file; a node's key is its position in that order.
    QByteArray bytes;
    QHash<const QStandardItem*, int> keys;
    int counter = 0;
    for (const QStandardItem* node : model.nodesInOrder()) {
        const NodeTag tag = NodeTag::split(TaskTreeModel::tag(node));
        const QStandardItem* parent = node->parent();
        bytes += WorkspaceRecord{parent == nullptr ? 0 : keys.value(parent), node->text(),
                                 tag.remark, FNtoSave(tag.path, taskDir)}
                     .format();
        keys.insert(node, ++counter);
    }
    return bytes;
}

WorkspaceFile::ReadResult WorkspaceFile::read(TaskTreeModel& model, const QByteArray& bytes,
                                              const QString& taskDir) {
    std::vector<std::pair<int, WorkspaceRecord>> records;
    std::optional<QString> problem;
    const std::vector<std::string_view> lines =
        textLines(std::string_view(bytes.constData(), static_cast<std::size_t>(bytes.size())));
    for (std::size_t i = 0; i < lines.size(); ++i) {
        // Blank lines hold no record and are passed over; the numbers count them.
        if (lines[i].empty())
            continue;
        const int number = static_cast<int>(i) + 1;
        std::optional<WorkspaceRecord> record = WorkspaceRecord::parse(QByteArrayView(lines[i]));
        if (!record) {
            problem = QString("line %1 is not a task record.").arg(number);
            break;
        }
        records.emplace_back(number, std::move(*record));
    }
    if (records.empty() && problem)
        return {false, QString("it is not a task file.")};

    // Nodes are built apart from the model and attached at the end, so a large workspace is
    // not announced to the view node by node. A record names its parent by line number, which
    // is the position of the parent among the nodes created so far.
    std::vector<QStandardItem*> created;
    std::vector<int> depths; // of each created node, 1 for a task
    created.reserve(records.size());
    depths.reserve(records.size());
    QList<QStandardItem*> tasks;
    for (const auto& [number, record] : records) {
        if (record.parentNumber > static_cast<int>(created.size())) {
            problem = QString("line %1 names K%2 as its parent, which does not come before it.")
                          .arg(number)
                          .arg(record.parentNumber);
            break;
        }
        const int depth = record.parentNumber == 0 ? 1 : depths[record.parentNumber - 1] + 1;
        if (depth > maxDepth) {
            problem = QString("line %1 nests deeper than %2 levels, more than a workspace holds.")
                          .arg(number)
                          .arg(maxDepth);
            break;
        }
        // A NUL ends the remark inside a node's tag, so a damaged file's NULs cannot stay in it.
        const QString remark = QString(record.remark).remove(QChar(0));
        const QString tag = record.storedPath.isEmpty()
                                ? QString()
                                : NodeTag{remark, fullPath(record.storedPath, taskDir)}.joined();
        QStandardItem* node =
            TaskTreeModel::createNode(record.caption, tag, Imagen(record.storedPath));
        if (record.parentNumber == 0) {
            // A task shows its folder also while it holds no file, as it did before saving.
            if (record.storedPath.isEmpty())
                TaskTreeModel::setFolderImages(node);
            tasks.append(node);
        } else {
            QStandardItem* parent = created[record.parentNumber - 1];
            parent->appendRow(node);
            if (TaskTreeModel::image(parent) == treeImage::none)
                TaskTreeModel::setFolderImages(parent);
        }
        created.push_back(node);
        depths.push_back(depth);
    }

    model.removeRows(0, model.rowCount());
    if (tasks.isEmpty())
        model.resetToDefaultTask(emptyFileTaskImage, emptyFileTaskImage);
    else
        model.invisibleRootItem()->appendRows(tasks);
    return {true, problem};
}

QString WorkspaceFile::FNtoSave(const QString& path, const QString& taskDir) {
    // The folder is looked for anywhere in the path but always cut from its start: a path that
    // merely holds the folder's text somewhere inside is shortened the same way. Both are
    // compared in one separator form, which keeps the lengths the cut relies on.
    if (QDir::fromNativeSeparators(path).contains(QDir::fromNativeSeparators(taskDir),
                                                  Qt::CaseInsensitive))
        return path.mid(taskDir.size());
    return path;
}

QString WorkspaceFile::fullPath(const QString& storedPath, const QString& taskDir) {
    return isAbsoluteStoredPath(storedPath) ? storedPath : taskDir + storedPath;
}

std::optional<QString> saveWorkspace(TaskTreeModel& model, WorkspaceState& state) {
    const QByteArray bytes = WorkspaceFile::write(model, state.TaskDir);
    QSaveFile file(state.TaskFileName);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.commit())
        return QString("Can't save the task file %1: %2")
            .arg(QDir::toNativeSeparators(state.TaskFileName), file.errorString());
    state.TaskDirty = false;
    return std::nullopt;
}

std::optional<QString> loadWorkspace(TaskTreeModel& model, WorkspaceState& state,
                                     const QString& path) {
    const std::variant<QByteArray, QString> read = readWorkspaceBytes(path);
    if (const QString* failure = std::get_if<QString>(&read))
        return *failure;
    const QByteArray& bytes = std::get<QByteArray>(read);
    const QString shownPath = QDir::toNativeSeparators(path);

    WorkspaceState opened;
    opened.setTaskFile(path);
    const WorkspaceFile::ReadResult result = WorkspaceFile::read(model, bytes, opened.TaskDir);
    if (!result.treeReplaced)
        return QString("Can't open %1: %2").arg(shownPath, *result.problem);
    state = opened;
    if (result.problem)
        return QString("The task file %1 is damaged: %2 The tasks before that line are loaded; "
                       "saving replaces the file with them.")
            .arg(shownPath, *result.problem);
    return std::nullopt;
}

} // namespace morlevant
