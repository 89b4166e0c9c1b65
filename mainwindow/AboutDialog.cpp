#include "mainwindow/AboutDialog.h"

#include "MorlevantVersion.h"
#include "mainwindow/MakerLinks.h"
#include "mainwindow/icons/ToolbarImageList.h"
#include "platform/Shell.h"

#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QUrl>
#include <QVBoxLayout>

namespace morlevant {

namespace {

QLabel* link(const QString& target, const QString& text, QWidget* parent) {
    auto* label = new QLabel(QStringLiteral("<a href=\"%1\">%2</a>").arg(target, text), parent);
    label->setTextFormat(Qt::RichText);
    label->setTextInteractionFlags(Qt::LinksAccessibleByMouse | Qt::LinksAccessibleByKeyboard);
    return label;
}

} // namespace

AboutDialog::AboutDialog(Shell& shell, QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("frmAbout"));
    setWindowTitle(QStringLiteral("About Morlevant"));

    auto* icon = new QLabel(this);
    icon->setPixmap(programIcon().pixmap(QSize(64, 64)));
    auto* name = new QLabel(QStringLiteral("Morlevant"), this);
    QFont large = name->font();
    large.setPointSizeF(large.pointSizeF() * 1.6);
    large.setBold(true);
    name->setFont(large);
    auto* version =
        new QLabel(QStringLiteral("Version ") + QLatin1StringView(programVersion), this);
    auto* purpose = new QLabel(QStringLiteral("Edits many plain-text files in one batch."), this);
    QLabel* site =
        link(QString::fromLatin1(maker::homepage), QString::fromLatin1(maker::homepage), this);
    site->setObjectName(QStringLiteral("lblHomepage"));
    QLabel* mail =
        link(maker::feedbackMail(),
             QStringLiteral("Feedback: ") + QString::fromLatin1(maker::feedbackAddress), this);
    mail->setObjectName(QStringLiteral("lblFeedback"));
    for (QLabel* label : {site, mail})
        connect(label, &QLabel::linkActivated, this,
                [&shell](const QString& target) { shell.openUrl(QUrl(target)); });

    auto* text = new QVBoxLayout;
    for (QLabel* label : {name, version, purpose, site, mail})
        text->addWidget(label);
    auto* top = new QHBoxLayout;
    top->addWidget(icon, 0, Qt::AlignTop);
    top->addSpacing(12);
    top->addLayout(text);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(top);
    layout->addWidget(buttons);
}

} // namespace morlevant
