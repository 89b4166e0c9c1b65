#pragma once

#include <QDialog>

namespace morlevant {

class Shell;

// The About box: the product's name and version, the maker's web site and a feedback mail,
// both opened through the shell.
class AboutDialog final : public QDialog {
    Q_OBJECT

public:
    AboutDialog(Shell& shell, QWidget* parent = nullptr);
};

} // namespace morlevant
