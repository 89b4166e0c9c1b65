#include "app/ProgramSurroundingsFromQt.h"

#include <QCoreApplication>
#include <QStandardPaths>

namespace morlevant {

ProgramSurroundings programSurroundingsFromQt() {
    return {qEnvironmentVariable("MORLEVANT_HOME").toStdString(),
            QCoreApplication::applicationDirPath().toStdString(),
            QStandardPaths::writableLocation(QStandardPaths::AppDataLocation).toStdString()};
}

} // namespace morlevant
