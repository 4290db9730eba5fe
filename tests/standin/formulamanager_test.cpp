#include "Formula/formulamanager.h"
#include "quoter/quoterbaseptr_metatype.h"
#include "standin/terminal.h"

#include <gtest/gtest.h>
#include <QCoreApplication>
#include <QMetaType>

#include <thread>

namespace {

class Receiver : public QObject {
    Q_OBJECT

public:
    QStringList heard;
    QList<quoter::QuoterBasePtr> records;

public slots:
    void hear(QString what) { heard.append(what); }
    void take(quoter::QuoterBasePtr record) { records.append(record); }

signals:
    void sent(quoter::QuoterBasePtr record);
};

boost::shared_ptr<TC::CFormulaManager> manager()
{
    return utils::CSingletonT<TC::CFormulaManager>::instance();
}

} // namespace

TEST(FormulaManager, shouldTellReceiversWhenTradeDataChanges)
{
    standin::Terminal terminal;
    Receiver receiver;
    QObject::connect(manager().get(), SIGNAL(sigTradeDataChange(QString)), &receiver, SLOT(hear(QString)));
    terminal.changeTradeData("新的一天");
    terminal.changeTradeData("reconnect");
    EXPECT_EQ(receiver.heard, QStringList({"新的一天", "reconnect"}));
}

TEST(FormulaManager, shouldKeepConnectionsWhenTerminalIsReset)
{
    Receiver receiver;
    QObject::connect(manager().get(), SIGNAL(sigTradeDataChange(QString)), &receiver, SLOT(hear(QString)));
    {
        standin::Terminal terminal;
    }
    standin::Terminal terminal;
    terminal.changeTradeData("day");
    EXPECT_EQ(receiver.heard, QStringList("day"));
}

TEST(FormulaManager, shouldQueueToTheReceiversThreadWhenEmittedOnAnother)
{
    int argc = 0;
    QCoreApplication application(argc, nullptr);
    standin::Terminal terminal;
    Receiver receiver;
    QObject::connect(manager().get(), SIGNAL(sigTradeDataChange(QString)), &receiver, SLOT(hear(QString)));
    std::thread([&terminal] { terminal.changeTradeData("day"); }).join();
    EXPECT_TRUE(receiver.heard.isEmpty());
    QCoreApplication::processEvents();
    EXPECT_EQ(receiver.heard, QStringList("day"));
}

TEST(Records, shouldTravelUnderTheirNameWhenRegisteredAndSignalsAreQueued)
{
    qRegisterMetaType<quoter::QuoterBasePtr>("quoter::QuoterBasePtr");
    int argc = 0;
    QCoreApplication application(argc, nullptr);
    Receiver receiver;
    QObject::connect(&receiver, SIGNAL(sent(quoter::QuoterBasePtr)), &receiver, SLOT(take(quoter::QuoterBasePtr)),
                     Qt::QueuedConnection);
    const auto record = std::make_shared<quoter::QuoterBase>();
    emit receiver.sent(record);
    EXPECT_TRUE(receiver.records.isEmpty());
    QCoreApplication::processEvents();
    ASSERT_EQ(receiver.records.size(), 1);
    EXPECT_EQ(receiver.records.first(), record);
}

#include "formulamanager_test.moc"
