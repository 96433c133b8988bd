#include "AnswerDialogs.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

namespace {

// Acts on the question box once it is shown.
void whenShown(const std::function<void(QMessageBox *)> &act)
{
    auto *timer = new QTimer;
    QObject::connect(timer, &QTimer::timeout, timer, [timer, act] {
        if (auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget())) {
            timer->stop();
            timer->deleteLater();
            act(box);
        }
    });
    timer->start(10);
}

class TestedDialogs : public NoByDefaultDialogs {
public:
    using NoByDefaultDialogs::askYesNo;
};

// The question before a change: Enter alone must not change the vendor file.
TEST(NoByDefaultDialogs, EnterAloneAnswersTheQuestionNo)
{
    TestedDialogs dialogs;
    whenShown([](QMessageBox *box) { QTest::keyClick(box, Qt::Key_Return); });
    EXPECT_EQ(dialogs.askYesNo("Merge vendor 120 into vendor 130?", "Velmora Office Message",
                               Dialogs::Yes),
              Dialogs::No);
}

TEST(NoByDefaultDialogs, TheYesButtonAnswersYes)
{
    TestedDialogs dialogs;
    whenShown([](QMessageBox *box) { box->button(QMessageBox::Yes)->click(); });
    EXPECT_EQ(dialogs.askYesNo("Merge vendor 120 into vendor 130?", "Velmora Office Message",
                               Dialogs::Yes),
              Dialogs::Yes);
}

} // namespace
