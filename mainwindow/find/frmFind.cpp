#include "mainwindow/find/frmFind.h"

#include "mainwindow/find/SearchState.h"

#include <QCheckBox>
#include <QEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>

namespace morlevant {

frmFind::frmFind(SearchState& state, const QString& initialText, std::function<void()> search,
                 QWidget* parent)
    : QDialog(parent), Text1(new QLineEdit(this)),
      optDirection{new QRadioButton(QStringLiteral("backward(&U)"), this),
                   new QRadioButton(QStringLiteral("Forward(&D)"), this)},
      chkCase(new QCheckBox(QStringLiteral("Match case(&C)"), this)),
      cmdFind(new QPushButton(QStringLiteral("Find(&F)"), this)),
      cmdcancel(new QPushButton(QStringLiteral("Cancel"), this)), state_(state),
      search_(std::move(search)) {
    setObjectName(QStringLiteral("frmFind"));
    setWindowTitle(QStringLiteral("Find"));
    setAttribute(Qt::WA_DeleteOnClose);
    Text1->setObjectName(QStringLiteral("Text1"));
    optDirection[0]->setObjectName(QStringLiteral("optDirection0"));
    optDirection[1]->setObjectName(QStringLiteral("optDirection1"));
    chkCase->setObjectName(QStringLiteral("chkCase"));
    cmdFind->setObjectName(QStringLiteral("cmdFind"));
    cmdcancel->setObjectName(QStringLiteral("cmdcancel"));
    cmdFind->setDefault(true);

    auto* label = new QLabel(QStringLiteral("Text to find(&N):"), this);
    label->setBuddy(Text1);
    auto* direction = new QGroupBox(QStringLiteral("Direction"), this);
    auto* directions = new QHBoxLayout(direction);
    directions->addWidget(optDirection[1]);
    directions->addWidget(optDirection[0]);
    auto* grid = new QGridLayout(this);
    grid->addWidget(label, 0, 0);
    grid->addWidget(Text1, 0, 1, 1, 2);
    grid->addWidget(cmdFind, 0, 3);
    grid->addWidget(direction, 1, 0, 2, 2);
    grid->addWidget(chkCase, 1, 2, Qt::AlignTop);
    grid->addWidget(cmdcancel, 1, 3, Qt::AlignTop);
    grid->setColumnStretch(1, 1);

    // What the dialog shows when it opens; filling Text1 marks the text new, as any change does.
    Text1->setText(initialText);
    state_.newText = true;
    chkCase->setChecked(state_.matchCase);
    optDirection[state_.direction == SearchState::backward ? 0 : 1]->setChecked(true);
    cmdFind->setEnabled(!Text1->text().isEmpty());

    connect(Text1, &QLineEdit::textChanged, this, [this](const QString& text) {
        state_.newText = true;
        cmdFind->setEnabled(!text.isEmpty());
    });
    Text1->installEventFilter(this);
    for (int index : {0, 1})
        connect(optDirection[index], &QRadioButton::clicked, this,
                [this, index] { state_.direction = index; });
    connect(chkCase, &QCheckBox::clicked, this,
            [this](bool checked) { state_.matchCase = checked; });
    connect(cmdFind, &QPushButton::clicked, this, &frmFind::cmdFind_Click);
    connect(cmdcancel, &QPushButton::clicked, this, &frmFind::reject);
}

bool frmFind::eventFilter(QObject* watched, QEvent* event) {
    if (watched == Text1 && event->type() == QEvent::FocusIn)
        Text1->selectAll();
    return QDialog::eventFilter(watched, event);
}

void frmFind::cmdFind_Click() {
    state_.findText = Text1->text();
    search_();
}

// Cancel, Escape and the window's close button all end the dialog so.
void frmFind::reject() {
    state_.findText = Text1->text();
    state_.matchCase = chkCase->isChecked();
    QDialog::reject();
}

} // namespace morlevant
