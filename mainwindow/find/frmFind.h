#pragma once

#include <QDialog>
#include <array>
#include <functional>

class QCheckBox;
class QLineEdit;
class QPushButton;
class QRadioButton;

namespace morlevant {

struct SearchState;

// The find dialog "Find": non-modal, it stays open while the user finds again and again, and
// keeps the search state in step with its controls. Cancel (or closing it) keeps the text and
// the match case for "Find &Next" and destroys the dialog.
class frmFind final : public QDialog {
    Q_OBJECT

public:
    // initialText: the viewer's selected text, or the last find text when nothing is selected.
    // search runs the viewer search on the state.
    frmFind(SearchState& state, const QString& initialText, std::function<void()> search,
            QWidget* parent = nullptr);

    QLineEdit* Text1;
    // Indexed by direction: optDirection[0] "backward(&U)", optDirection[1] "Forward(&D)".
    std::array<QRadioButton*, 2> optDirection;
    QCheckBox* chkCase;
    QPushButton* cmdFind;
    QPushButton* cmdcancel;

public slots:
    void reject() override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void cmdFind_Click();

    SearchState& state_;
    std::function<void()> search_;
};

} // namespace morlevant
