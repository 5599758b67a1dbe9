#include "app/desktop/key_list.h"

#include <QAbstractButton>
#include <QAction>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QRegularExpression>
#include <QShortcut>

using namespace Qt::Literals::StringLiterals;

namespace {

bool isUsed(const QWidget &control, const QWidget &window) {
    return control.window() == &window && control.isEnabled() && control.isVisibleTo(&window);
}

QString keyText(const QList<QKeySequence> &keys) {
    QStringList texts;
    for (const QKeySequence &key : keys)
        texts.append(key.toString(QKeySequence::NativeText));
    return texts.join(u"、"_s);
}

bool isLetter(const QKeySequence &key, const QString &caption) {
    return !key.isEmpty() && key == QKeySequence::mnemonic(caption);
}

/// The controls of a kind that can be used, in the order in which they were made.
template <class T> QList<T *> used(const QWidget &window) {
    QList<T *> controls;
    for (T *control : window.findChildren<T *>())
        if (isUsed(*control, window))
            controls.append(control);
    return controls;
}

bool belongsTo(const QObject *part, const QWidget &window) {
    while (part && !part->isWidgetType())
        part = part->parent();
    return part && static_cast<const QWidget *>(part)->window() == &window;
}

QList<QAction *> actionsOf(const QWidget &window) {
    QList<QAction *> actions;
    for (QAction *action : window.findChildren<QAction *>())
        if (action->isEnabled() && action->isVisible() && !action->shortcut().isEmpty() &&
            (belongsTo(action, window) || qobject_cast<QMenu *>(action->parent())))
            actions.append(action);
    return actions;
}

QList<QShortcut *> shortcutsOf(const QWidget &window) {
    QList<QShortcut *> shortcuts;
    for (QShortcut *shortcut : window.findChildren<QShortcut *>())
        if (shortcut->isEnabled() && !shortcut->key().isEmpty() && belongsTo(shortcut, window))
            shortcuts.append(shortcut);
    return shortcuts;
}

class Keys {
public:
    explicit Keys(const QWidget &window) : m_actions(actionsOf(window)) {}

    void addMenu(const QString &caption, const QMenu &menu) {
        KeyGroup group{caption, {}};
        addMenuTo(group, menu);
        add(group);
    }
    void addActions(const QString &caption) {
        KeyGroup group{caption, {}};
        while (!m_actions.isEmpty())
            take(group, m_actions.front());
        add(group);
    }
    void add(const KeyGroup &group) {
        if (!group.lines.isEmpty())
            groups.append(group);
    }

    QList<KeyGroup> groups;

private:
    void take(KeyGroup &group, QAction *action) {
        if (m_actions.removeOne(action))
            group.lines.append({keyText(action->shortcuts()), plainCaption(action->text())});
    }
    void addMenuTo(KeyGroup &group, const QMenu &menu) {
        for (QAction *action : menu.actions())
            if (const QMenu *sub = action->menu())
                addMenuTo(group, *sub);
            else
                take(group, action);
    }

    QList<QAction *> m_actions; ///< that stand nowhere yet
};

QString menuTitle(const QString &caption) {
    const QKeySequence key = QKeySequence::mnemonic(caption);
    return key.isEmpty() ? plainCaption(caption)
                         : plainCaption(caption) + u"（%1）"_s.arg(key.toString(QKeySequence::NativeText));
}

} // namespace

QString plainCaption(QString caption) {
    static const QRegularExpression mnemonic(u"[（(]&.[）)]"_s);
    static const QRegularExpression keyBehind(
        u"\\s*[（(]?(Shift\\+|Ctrl\\+|Alt\\+)*(F\\d+|Esc|Enter)[）)]?$"_s);
    caption.remove(mnemonic).remove(keyBehind).remove(u'&');
    return caption.replace(u'\n', u' ').trimmed();
}

KeyGroup lettersOf(const QWidget &window) {
    KeyGroup letters{u"ボタン・項目"_s, {}};
    for (const QAbstractButton *button : used<QAbstractButton>(window))
        if (isLetter(button->shortcut(), button->text()))
            letters.lines.append({keyText({button->shortcut()}), plainCaption(button->text())});
    for (const QLabel *label : used<QLabel>(window))
        if (const QKeySequence key = QKeySequence::mnemonic(label->text());
            label->buddy() && !key.isEmpty() && isUsed(*label->buddy(), window))
            letters.lines.append({keyText({key}), plainCaption(label->text())});
    return letters;
}

QList<KeyGroup> keysOf(const QWidget &window) {
    Keys keys(window);
    for (const QMenuBar *bar : used<QMenuBar>(window))
        for (const QAction *action : bar->actions())
            if (const QMenu *menu = action->menu())
                keys.addMenu(menuTitle(action->text()), *menu);
    keys.addActions(u"この画面"_s);
    KeyGroup commands{u"この画面"_s, {}};
    for (const QAbstractButton *button : used<QAbstractButton>(window))
        if (const QKeySequence key = button->shortcut(); !key.isEmpty() && !isLetter(key, button->text()))
            commands.lines.append({keyText({key}), plainCaption(button->text())});
    for (const QShortcut *shortcut : shortcutsOf(window))
        commands.lines.append({keyText({shortcut->key()}), shortcut->whatsThis()});
    keys.add(commands);
    keys.add(lettersOf(window));
    return keys.groups;
}

QObject *commandOf(const QWidget &window, const QKeySequence &key) {
    for (QAction *action : actionsOf(window))
        if (action->shortcuts().contains(key))
            return action;
    for (QAbstractButton *button : used<QAbstractButton>(window))
        if (button->shortcut() == key)
            return button;
    for (QShortcut *shortcut : shortcutsOf(window))
        if (shortcut->key() == key)
            return shortcut;
    return nullptr;
}

void activate(QObject &command) {
    if (auto *action = qobject_cast<QAction *>(&command))
        action->trigger();
    else if (auto *button = qobject_cast<QAbstractButton *>(&command))
        button->click();
    else if (auto *shortcut = qobject_cast<QShortcut *>(&command))
        Q_EMIT shortcut->activated();
}
