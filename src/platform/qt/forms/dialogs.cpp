// Lays out the small dialogs.
#include "src/platform/qt/forms/dialogs.h"

#include <QCheckBox>
#include <QDialog>
#include <QPlainTextEdit>

std::unique_ptr<QWidget> MakePleaseWait(QWidget*, const Translate&)
{
    auto banner = std::make_unique<QWidget>(nullptr, Qt::SplashScreen | Qt::FramelessWindowHint);
    QVBoxLayout* column = Column(banner.get());
    column->setContentsMargins(Space(32), Space(24), Space(32), Space(24));
    QLabel* header = Caption("lblHeader", QString());
    QFont font = header->font();
    font.setPointSizeF(font.pointSizeF() * 2);
    font.setBold(true);
    header->setFont(font);
    column->addWidget(header);
    column->addWidget(Caption("lblLine1", QString()));
    column->addWidget(Caption("lblLine2", QString()));
    banner->setMinimumWidth(Space(320));
    return banner;
}

std::unique_ptr<QWidget> MakeTypeMatchNotification(QWidget* parent, const Translate& t)
{
    auto dialog = std::make_unique<QDialog>(parent);
    QVBoxLayout* column = DialogColumn(*dialog);
    QLabel* text = Note("lblNotification");
    text->setMinimumWidth(Space(400));
    column->addWidget(text);
    column->addWidget(Named<QCheckBox>("chkDontShowAgain", t("Never show this message again")));
    column->addSpacing(Space(8));
    auto* go_on = Named<QPushButton>("cmdContinue", t("&Continue"));
    go_on->setDefault(true);
    column->addLayout(Row({nullptr, Named<QPushButton>("cmdCancel", t("Ca&ncel")), go_on}));
    return dialog;
}

std::unique_ptr<QWidget> MakeAbout(QWidget* parent, const Translate& t)
{
    auto dialog = std::make_unique<QDialog>(parent);
    QVBoxLayout* column = DialogColumn(*dialog);
    QLabel* product = Caption("lblProduct", QString());
    QFont font = product->font();
    font.setPointSizeF(font.pointSizeF() * 1.5);
    font.setBold(true);
    product->setFont(font);
    column->addWidget(product);
    column->addWidget(Note("lblDescription"));
    column->addWidget(Caption("lblVersion", QString()));
    auto* libraries = Named<QPlainTextEdit>("txtLibraries");
    libraries->setAccessibleName(t("Libraries"));
    column->addWidget(libraries, 1);
    auto* ok = Named<QPushButton>("cmdOK");
    ok->setDefault(true);
    column->addLayout(Row({nullptr, ok}));
    dialog->resize(Space(480), Space(400));
    return dialog;
}
