#include "settings/SettingsStore.h"

#include <QCoreApplication>

namespace morlevant {

namespace {

const QString organisation = QStringLiteral("Corvellum");
const QString group = QStringLiteral("Setting");

QString folded(const QString& key) {
    return key.toLower();
}

} // namespace

SettingsStore::SettingsStore()
    : settings_(QSettings::NativeFormat, QSettings::UserScope, organisation,
                QCoreApplication::applicationName()) {
    settings_.beginGroup(group);
    foldStoredKeys();
}

SettingsStore::SettingsStore(const QString& iniPath) : settings_(iniPath, QSettings::IniFormat) {
    settings_.beginGroup(group);
    foldStoredKeys();
}

// A settings file edited by hand may spell a key in any case ("AFSon=False"): each is kept
// under its folded spelling, where the program reads it. Where both spellings are present the
// folded one, which the program wrote, stays.
void SettingsStore::foldStoredKeys() {
    for (const QString& key : settings_.childKeys()) {
        const QString folding = folded(key);
        if (folding == key)
            continue;
        if (!settings_.contains(folding))
            settings_.setValue(folding, settings_.value(key));
        settings_.remove(key);
    }
}

QString SettingsStore::value(const QString& key, const QString& defaultValue) const {
    const QVariant stored = settings_.value(folded(key));
    if (!stored.isValid())
        return defaultValue;
    // A hand-edited INI value with an unquoted comma comes back as a list.
    if (stored.typeId() == QMetaType::QStringList)
        return stored.toStringList().join(',');
    return stored.toString();
}

bool SettingsStore::contains(const QString& key) const {
    return settings_.contains(folded(key));
}

void SettingsStore::setValue(const QString& key, const QString& value) {
    settings_.setValue(folded(key), value);
}

void SettingsStore::remove(const QString& key) {
    settings_.remove(folded(key));
}

void SettingsStore::sync() {
    settings_.sync();
}

} // namespace morlevant
