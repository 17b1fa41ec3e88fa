#include "language_menu.h"

#include "operator_settings.h"
#include "texts/desktop.h"

#include <QActionGroup>
#include <QMenu>
#include <QRegularExpression>

namespace velmor {
namespace {

// "中文(&C)" reads "中文", "&English" "English".
QString withoutAccessKey(QString caption)
{
    static const QRegularExpression key(QStringLiteral("\\(&.\\)|&"));
    return caption.remove(key);
}

}  // namespace

LanguageMenu::LanguageMenu(QMenu* view, Language language) : QObject(view)
{
    QMenu* menu = view->addMenu(pick(texts::desktop::kMnuViewLanguage, language));
    menu->setObjectName(QStringLiteral("MnuView_Language"));
    // A heading, not an entry: the choice applies from the next start.
    menu->addSection(pick(texts::desktop::kLanguageNextStart, language))->setObjectName(QStringLiteral("MnuView_Language_Note"));
    auto* group = new QActionGroup(menu);
    const std::optional<int> chosenMode = chosenLanguageMode();
    const auto choice = [&](const char* name, const Text& caption, std::optional<Language> choice) {
        QAction* action = menu->addAction(pick(caption, language));
        action->setObjectName(QLatin1String(name));
        action->setCheckable(true);
        action->setActionGroup(group);
        action->setChecked(chosenMode ? choice && *choice == languageOf(*chosenMode) : !choice);
        connect(action, &QAction::triggered, this, [this, choice, caption = action->text(), language] {
            chooseLanguage(choice);
            emit chosen(pick(texts::desktop::kLanguageChosen, language).arg(withoutAccessKey(caption)));
        });
    };
    choice("MnuView_Language_System", texts::desktop::kLanguageFollowSystem, std::nullopt);
    choice("MnuView_Language_Chinese", texts::desktop::kLanguageChinese, Language::Chinese);
    choice("MnuView_Language_English", texts::desktop::kLanguageEnglish, Language::English);
}

}  // namespace velmor
