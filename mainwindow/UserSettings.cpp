#include "UserSettings.h"

#include "SettingsStore.h"

namespace morlevant {

void LoadSet(const SettingsStore&, UserSettings&, const QString&) {}

void SaveSet(SettingsStore&, const UserSettings&) {}

} // namespace morlevant
