// The ".tsk" reader over any bytes; what it loads must save and load again to the same tree.
#include "workspace/TaskTreeModel.h"
#include "workspace/WorkspaceFile.h"

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace morlevant;
    TaskTreeModel model;
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    if (!WorkspaceFile::read(model, bytes, QStringLiteral("/w/")).treeReplaced)
        return 0;
    const QByteArray saved = WorkspaceFile::write(model, QStringLiteral("/w/"));
    TaskTreeModel again;
    WorkspaceFile::read(again, saved, QStringLiteral("/w/"));
    if (WorkspaceFile::write(again, QStringLiteral("/w/")) != saved)
        std::abort();
    return 0;
}
