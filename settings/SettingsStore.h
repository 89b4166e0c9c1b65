#pragma once

#include <QSettings>
#include <QString>

namespace morlevant {

// The per-user settings of the program: text values under the group "Setting" of organisation
// "Corvellum". Keys are folded to lower case on every read and write, because the program
// spells several keys differently when reading and writing ("AFson" / "AFSon").
class SettingsStore final {
public:
    // The user's own store (the registry on Windows, an INI file under ~/.config on Linux).
    SettingsStore();
    // A store kept in the INI file at iniPath, for tests and portable set-ups.
    explicit SettingsStore(const QString& iniPath);

    QString value(const QString& key, const QString& defaultValue = {}) const;
    bool contains(const QString& key) const;
    void setValue(const QString& key, const QString& value);
    // Removing a key that is not there is no error.
    void remove(const QString& key);
    // Writes pending changes to the backing file or registry.
    void sync();

private:
    void foldStoredKeys();

    QSettings settings_;
};

} // namespace morlevant
