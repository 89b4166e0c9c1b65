#include "workspace/NodeTag.h"

namespace morlevant {

NodeTag NodeTag::split(const QString& tag) {
    const qsizetype nul = tag.indexOf(QChar(0));
    if (nul < 0)
        return {QString(), tag};
    return {tag.left(nul), tag.mid(nul + 1)};
}

QString NodeTag::joined() const {
    return remark + QChar(0) + path;
}

} // namespace morlevant
