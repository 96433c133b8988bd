#include "keysend/KeySender.h"
#include "keysend/ExtendedCharacters.h"
#include "keysend/KeyNames.h"

#include <QApplication>
#include <QHash>
#include <QKeyEvent>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTest>
#include <QVBoxLayout>
#include <QWidget>

#include <gtest/gtest.h>

#include <memory>
#include <ostream>
#include <string>

namespace {

// Records every key press and release the focused widget receives (not the copies passed on to
// its parents).
class KeyRecorder final : public QObject {
public:
    struct Key {
        bool press;
        Qt::Key key;
        Qt::KeyboardModifiers modifiers;
        QString text;
        QObject *receiver;
    };

    KeyRecorder() { qApp->installEventFilter(this); }
    ~KeyRecorder() override { qApp->removeEventFilter(this); }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if ((event->type() == QEvent::KeyPress || event->type() == QEvent::KeyRelease) &&
            watched == QApplication::focusWidget()) {
            const auto *keyEvent = static_cast<QKeyEvent *>(event);
            keys.append({event->type() == QEvent::KeyPress, static_cast<Qt::Key>(keyEvent->key()),
                         keyEvent->modifiers(), keyEvent->text(), watched});
        }
        return false;
    }

    QList<Qt::Key> pressedKeys() const
    {
        QList<Qt::Key> pressed;
        for (const Key &key : keys) {
            if (key.press)
                pressed.append(key.key);
        }
        return pressed;
    }

    QList<Key> keys;
};

// A shown, active window with two line edits; the first has the focus.
class KeySenderTest : public testing::Test {
protected:
    void SetUp() override
    {
        window = std::make_unique<QWidget>();
        auto *layout = new QVBoxLayout(window.get());
        first = new QLineEdit(window.get());
        second = new QLineEdit(window.get());
        first->setObjectName(QStringLiteral("first"));
        second->setObjectName(QStringLiteral("second"));
        layout->addWidget(first);
        layout->addWidget(second);
        window->show();
        window->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
        first->setFocus();
        QCoreApplication::processEvents();
        ASSERT_EQ(QApplication::focusWidget(), first);
    }

    void TearDown() override
    {
        window.reset();
        QCoreApplication::processEvents();
    }

    static void letKeysArrive() { QCoreApplication::processEvents(); }

    std::unique_ptr<QWidget> window;
    QLineEdit *first = nullptr;
    QLineEdit *second = nullptr;
    RememberedLockKeys locks;
};

TEST_F(KeySenderTest, WithCapsLockOnTypingAbcGivesLowerCaseAndCapsLockIsOnAgain)
{
    locks.setOn(KeyNames::CapsLock, true);
    KeySender sender(&locks);
    sender.sendKeys(QStringLiteral("abc"));
    letKeysArrive();
    EXPECT_EQ(first->text(), QStringLiteral("abc"));
    EXPECT_TRUE(locks.isOn(KeyNames::CapsLock));
}

TEST_F(KeySenderTest, LockKeysThatAreOnAreSwitchedOffAroundTheKeysAndBackOn)
{
    locks.setOn(KeyNames::CapsLock, true);
    locks.setOn(KeyNames::ScrollLock, true);
    KeySender sender(&locks);
    KeyRecorder recorder;
    sender.sendKeys(QStringLiteral("a"));
    letKeysArrive();
    const QList<Qt::Key> expected{Qt::Key_CapsLock, Qt::Key_ScrollLock, Qt::Key_A, Qt::Key_CapsLock,
                                  Qt::Key_ScrollLock};
    EXPECT_EQ(recorder.pressedKeys(), expected);
    EXPECT_EQ(recorder.keys.size(), 2 * expected.size());
    EXPECT_TRUE(locks.isOn(KeyNames::CapsLock));
    EXPECT_TRUE(locks.isOn(KeyNames::ScrollLock));
    EXPECT_FALSE(locks.isOn(KeyNames::NumLock));
}

TEST_F(KeySenderTest, TabMovesTheFocusToTheNextLineEdit)
{
    KeySender sender(&locks);
    sender.sendKeys(QStringLiteral("{TAB}"));
    EXPECT_EQ(QApplication::focusWidget(), first) << "posted keys arrive with the event loop";
    letKeysArrive();
    EXPECT_EQ(QApplication::focusWidget(), second);
}

// Turns Enter in a field into a Tab sent through the sender, as the vendor fields do.
class EnterMovesOn final : public QObject {
public:
    explicit EnterMovesOn(KeySender &sender) : m_sender(sender) {}

    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::KeyPress &&
            static_cast<QKeyEvent *>(event)->key() == Qt::Key_Return) {
            m_sender.sendKeys(QStringLiteral("{TAB}"));
            return true;
        }
        return false;
    }

private:
    KeySender &m_sender;
};

TEST_F(KeySenderTest, TabSentFromAnEnterKeyHandlerMovesTheFocusOn)
{
    KeySender sender(&locks);
    EnterMovesOn enterMovesOn(sender);
    first->installEventFilter(&enterMovesOn);
    first->setText(QStringLiteral("kept"));
    QTest::keyClick(first, Qt::Key_Return);
    letKeysArrive();
    EXPECT_EQ(QApplication::focusWidget(), second);
    EXPECT_EQ(first->text(), QStringLiteral("kept"));
}

TEST_F(KeySenderTest, KeysAfterATabGoToTheFieldThatThenHasTheFocus)
{
    KeySender sender(&locks);
    sender.sendKeys(QStringLiteral("ab{TAB}cd"));
    letKeysArrive();
    EXPECT_EQ(first->text(), QStringLiteral("ab"));
    EXPECT_EQ(second->text(), QStringLiteral("cd"));
}

TEST_F(KeySenderTest, TabAndTabInLowerCaseSendTheTabKey)
{
    for (const QString &keys : {QStringLiteral("{TAB}"), QStringLiteral("{tab}")}) {
        SCOPED_TRACE(keys.toStdString());
        first->setFocus();
        KeySender sender(&locks);
        KeyRecorder recorder;
        sender.sendKeys(keys);
        letKeysArrive();
        EXPECT_EQ(recorder.pressedKeys(), QList<Qt::Key>{Qt::Key_Tab});
    }
}

struct NamedQtKey {
    const char *behaviour;
    const char16_t *keys;
    Qt::Key key;
};

void PrintTo(const NamedQtKey &c, std::ostream *out)
{
    *out << c.behaviour;
}

class SendsNamedKey : public KeySenderTest, public testing::WithParamInterface<NamedQtKey> {};

TEST_P(SendsNamedKey, AsItsQtKeyPressAndRelease)
{
    KeySender sender(&locks);
    KeyRecorder recorder;
    sender.sendKeys(QString::fromUtf16(GetParam().keys));
    letKeysArrive();
    ASSERT_EQ(recorder.keys.size(), 2);
    EXPECT_TRUE(recorder.keys[0].press);
    EXPECT_FALSE(recorder.keys[1].press);
    EXPECT_EQ(recorder.keys[0].key, GetParam().key);
    EXPECT_EQ(recorder.keys[1].key, GetParam().key);
    EXPECT_EQ(recorder.keys[0].receiver, first);
}

const NamedQtKey namedQtKeys[] = {
    {"PrtscIsThePrintKey", u"{PRTSC}", Qt::Key_Printer},
    {"PrtscrIsThePrintScreenKey", u"{PRTSCR}", Qt::Key_Print},
    {"BreakIsThePauseKey", u"{BREAK}", Qt::Key_Pause},
    {"TildeIsTheEnterKey", u"~", Qt::Key_Return},
    {"F5IsTheF5Key", u"{f5}", Qt::Key_F5},
    {"HomeIsTheHomeKey", u"{HOME}", Qt::Key_Home},
};

INSTANTIATE_TEST_SUITE_P(KeySender, SendsNamedKey, testing::ValuesIn(namedQtKeys),
                         [](const testing::TestParamInfo<NamedQtKey> &info) {
                             return std::string(info.param.behaviour);
                         });

TEST_F(KeySenderTest, UnknownNameInBracesSendsNoKey)
{
    KeySender sender(&locks);
    KeyRecorder recorder;
    sender.sendKeys(QStringLiteral("{BOGUS}"));
    letKeysArrive();
    EXPECT_TRUE(recorder.keys.isEmpty());
    EXPECT_EQ(first->text(), QString());
}

TEST_F(KeySenderTest, TildeIsEnterInALineEdit)
{
    QSignalSpy returnPressed(first, &QLineEdit::returnPressed);
    KeySender sender(&locks);
    sender.sendKeys(QStringLiteral("x~"));
    letKeysArrive();
    EXPECT_EQ(returnPressed.count(), 1);
    EXPECT_EQ(first->text(), QStringLiteral("x"));
}

TEST_F(KeySenderTest, ShiftAppliesToTheNextKeyOnlyAndToAWholeGroup)
{
    KeySender sender(&locks);
    sender.sendKeys(QStringLiteral("+ab+(cd)e"));
    letKeysArrive();
    EXPECT_EQ(first->text(), QStringLiteral("AbCDe"));
}

TEST_F(KeySenderTest, ControlGroupSelectsAllAndTypingReplacesIt)
{
    first->setText(QStringLiteral("old"));
    KeySender sender(&locks);
    sender.sendKeys(QStringLiteral("^(a)new"));
    letKeysArrive();
    EXPECT_EQ(first->text(), QStringLiteral("new"));
}

TEST_F(KeySenderTest, BackspaceNameDeletesTheLastCharacter)
{
    KeySender sender(&locks);
    sender.sendKeys(QStringLiteral("abc{BS}{BACKSPACE}d"));
    letKeysArrive();
    EXPECT_EQ(first->text(), QStringLiteral("ad"));
}

TEST_F(KeySenderTest, LiteralCharactersInBracesAreTyped)
{
    KeySender sender(&locks);
    sender.sendKeys(QStringLiteral("{+}{^}{%}{~}{{}{}}{(}{)}"));
    letKeysArrive();
    EXPECT_EQ(first->text(), QStringLiteral("+^%~{}()"));
}

TEST_F(KeySenderTest, ExpandedAccentedTextIsTypedAsTheAccentedCharacters)
{
    KeySender sender(&locks);
    sender.sendKeys(expandExtendedCharacters(QStringLiteral("Caf\u00e9 \u00c7a")));
    letKeysArrive();
    EXPECT_EQ(first->text(), QStringLiteral("Caf\u00e9 \u00c7a"));
    EXPECT_FALSE(locks.isOn(KeyNames::NumLock));
}

TEST_F(KeySenderTest, ExpandedAccentedTextWithNumLockOnLeavesNumLockOn)
{
    locks.setOn(KeyNames::NumLock, true);
    KeySender sender(&locks);
    sender.sendKeys(expandExtendedCharacters(QStringLiteral("\u00fc")));
    letKeysArrive();
    EXPECT_EQ(first->text(), QStringLiteral("\u00fc"));
    EXPECT_TRUE(locks.isOn(KeyNames::NumLock));
}

TEST_F(KeySenderTest, DeliveredSendingHasTheKeysArrivedOnReturn)
{
    KeySender sender(&locks);
    sender.sendKeys(QStringLiteral("xy{TAB}z"), KeySender::Delivery::Delivered);
    EXPECT_EQ(first->text(), QStringLiteral("xy"));
    EXPECT_EQ(second->text(), QStringLiteral("z"));
    EXPECT_EQ(QApplication::focusWidget(), second);
}

TEST_F(KeySenderTest, SenderKeepsItsOwnLockStatesWhenGivenNone)
{
    KeySender sender;
    sender.lockKeys().toggle(KeyNames::CapsLock);
    sender.sendKeys(QStringLiteral("abc"));
    letKeysArrive();
    EXPECT_EQ(first->text(), QStringLiteral("abc"));
    EXPECT_TRUE(sender.lockKeys().isOn(KeyNames::CapsLock));
}

TEST_F(KeySenderTest, KeysWithNoFocusedWidgetGoNowhere)
{
    KeySender sender(&locks);
    first->clearFocus();
    ASSERT_EQ(QApplication::focusWidget(), nullptr);
    KeyRecorder recorder;
    sender.sendKeys(QStringLiteral("abc{TAB}"));
    letKeysArrive();
    EXPECT_TRUE(recorder.keys.isEmpty());
}

TEST_F(KeySenderTest, KeysStillWaitingWhenTheSenderGoesAreDropped)
{
    KeyRecorder recorder;
    {
        KeySender sender(&locks);
        sender.sendKeys(QStringLiteral("abc"));
    }
    letKeysArrive();
    EXPECT_TRUE(recorder.keys.isEmpty());
    EXPECT_EQ(first->text(), QString());
}

TEST_F(KeySenderTest, JunkKeyStringsLeaveNoKeyHeldAndTheSenderWorking)
{
    KeySender sender(&locks);
    KeyRecorder recorder;
    for (const char16_t *keys : {u"{", u"}", u"((((", u"))))", u"+^%", u"{TAB", u"{}}}}",
                                 u"%({NUMPAD9}{NUMPAD9}{NUMPAD9}{NUMPAD9}", u""}) {
        sender.sendKeys(QString::fromUtf16(keys));
        letKeysArrive();
    }
    // Every key that went down came up again: no Shift, Ctrl or Alt is left held.
    QHash<int, int> down;
    for (const KeyRecorder::Key &key : recorder.keys)
        down[key.key] += key.press ? 1 : -1;
    for (auto it = down.cbegin(); it != down.cend(); ++it)
        EXPECT_EQ(it.value(), 0) << "key " << it.key();
    EXPECT_FALSE(locks.isOn(KeyNames::CapsLock));
    EXPECT_FALSE(locks.isOn(KeyNames::NumLock));
    // And the next key string types as it should.
    first->setFocus();
    first->clear();
    recorder.keys.clear();
    sender.sendKeys(QStringLiteral("x"));
    letKeysArrive();
    EXPECT_EQ(first->text(), QStringLiteral("x"));
    ASSERT_FALSE(recorder.keys.isEmpty());
    EXPECT_EQ(recorder.keys.first().modifiers, Qt::NoModifier);
}

} // namespace
