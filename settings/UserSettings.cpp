#include "settings/UserSettings.h"

#include "settings/SettingsStore.h"

#include <QDir>
#include <QStandardPaths>
#include <cmath>
#include <optional>

namespace morlevant {

namespace {

// A stored boolean is "True" or "False" as written here, or a number (-1 and 0 are the
// defaults' form) where anything but zero is true.
std::optional<bool> toBool(const QString& text) {
    const QString trimmed = text.trimmed();
    if (trimmed.compare("True", Qt::CaseInsensitive) == 0)
        return true;
    if (trimmed.compare("False", Qt::CaseInsensitive) == 0)
        return false;
    bool ok = false;
    const double number = trimmed.toDouble(&ok);
    return ok ? std::optional<bool>(number != 0) : std::nullopt;
}

QString fromBool(bool value) {
    return value ? QStringLiteral("True") : QStringLiteral("False");
}

std::optional<double> toNumber(const QString& text) {
    bool ok = false;
    const double number = text.trimmed().toDouble(&ok);
    return ok && std::isfinite(number) ? std::optional<double>(number) : std::nullopt;
}

std::optional<double> toFontSize(const QString& text) {
    const std::optional<double> size = toNumber(text);
    return size && *size > 0 ? size : std::nullopt;
}

std::optional<int> toWindowState(const QString& text) {
    bool ok = false;
    const int state = text.trimmed().toInt(&ok);
    return ok && state >= UserSettings::Normal && state <= UserSettings::Maximised
               ? std::optional<int>(state)
               : std::nullopt;
}

std::optional<QString> toFontName(const QString& text) {
    return text.trimmed().isEmpty() ? std::nullopt : std::optional<QString>(text);
}

std::optional<QString> asText(const QString& text) {
    return text;
}

// Reads one key: a missing key gives fallback, a value that does not convert leaves target
// as it was, so one bad value never stops the settings after it.
template <typename T, typename Convert>
void load(const SettingsStore& store, const QString& key, const T& fallback, T& target,
          Convert convert) {
    if (!store.contains(key)) {
        target = fallback;
        return;
    }
    if (const auto value = convert(store.value(key)))
        target = static_cast<T>(*value);
}

} // namespace

void LoadSet(const SettingsStore& store, UserSettings& settings, const QString& programFolder) {
    const UserSettings fresh;
    load(store, "fontname", fresh.fontName, settings.fontName, toFontName);
    load(store, "fontsize", fresh.fontSize, settings.fontSize, toFontSize);
    load(store, "fontbold", fresh.fontBold, settings.fontBold, toBool);
    load(store, "fonti", fresh.fontItalic, settings.fontItalic, toBool);
    load(store, "fontu", fresh.fontUnderline, settings.fontUnderline, toBool);
    load(store, "AFson", fresh.addFileInSub, settings.addFileInSub, toBool);
    load(store, "DealHtml", fresh.showHtml, settings.showHtml, toBool);
    load(store, "AddSon", fresh.sameLevelDrag, settings.sameLevelDrag, toBool);
    load(store, "Drag", fresh.liveDrag, settings.liveDrag, toBool);
    load(store, "EditWithSettings", fresh.editWithSettings, settings.editWithSettings, toBool);
    load(store, "BOIPath", programFolder, settings.BOIPath, asText);
    load(store, "DataPath", programFolder, settings.DataPath, asText);
    load(store, "split", fresh.split, settings.split, toNumber);
    load(store, "defbrowse", fresh.defBrowse, settings.defBrowse, asText);
    // "Lastdir" is written on every close but deliberately not applied: starting the program
    // never changes its working directory.
    settings.tempFilePath =
        QStandardPaths::writableLocation(QStandardPaths::TempLocation) + "/corvellum.tmp";
    // The program never starts minimised: a stored minimised state keeps the window's own.
    int windowState = settings.windowState;
    load(store, "wndstyle", static_cast<int>(UserSettings::Maximised), windowState, toWindowState);
    if (windowState != UserSettings::Minimised)
        settings.windowState = windowState;
}

void SaveSet(SettingsStore& store, const UserSettings& settings) {
    store.setValue("fontname", settings.fontName);
    store.setValue("fontsize", QString::number(settings.fontSize));
    store.setValue("fontbold", fromBool(settings.fontBold));
    store.setValue("fonti", fromBool(settings.fontItalic));
    store.setValue("fontu", fromBool(settings.fontUnderline));
    store.setValue("AddSon", fromBool(settings.sameLevelDrag));
    store.setValue("AFSon", fromBool(settings.addFileInSub));
    store.setValue("DealHtml", fromBool(settings.showHtml));
    store.setValue("Drag", fromBool(settings.liveDrag));
    store.setValue("EditWithSettings", fromBool(settings.editWithSettings));
    store.setValue("Split", QString::number(settings.split));
    store.setValue("WndStyle", QString::number(settings.windowState));
    store.setValue("DefBrowse", settings.defBrowse);
    store.setValue("LastDir", QDir::toNativeSeparators(QDir::currentPath()));
    store.setValue("BOIPath", settings.BOIPath);
    store.setValue("DataPath", settings.DataPath);
    store.sync();
}

} // namespace morlevant
