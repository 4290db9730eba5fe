#pragma once

#include "tests/tessimodel/oracle/modelduel.h"
#include "tests/tessimodel/oracle/naivestate.h"
#include "tests/tessimodel/oracle/realstate.h"
#include "tests/tessimodel/oracle/sections.h"

namespace tests::oracle {

// A duel of models that leave their rows with the manager, and whose panels keep the extremes from poll to poll.
template <class Step, class Real, class Naive>
class ThousandLevelDuel : public ModelDuel<Step, Real, Naive> {
protected:
    explicit ThousandLevelDuel(standin::Terminal& terminal)
        : ModelDuel<Step, Real, Naive>(terminal)
        , m_realManager(utils::CSingletonT<TC::CDepthThousandModelManager>::instance())
    {
        m_realManager->clearDatas();
    }

    // A model that goes leaves its rows with the manager, as a cleared one does.
    void leave() override { this->m_naive->clear(); }

    void forgetSavedRows()
    {
        this->m_terminal.changeTradeData("another day");
        m_naiveManager.saved.clear();
    }

    void startExtremesAnew()
    {
        m_realPanel.minPrice = m_naivePanel.minPrice = DBL_MAX;
        m_realPanel.maxPrice = m_naivePanel.maxPrice = -DBL_MAX;
        m_realPanel.maxAmount = m_naivePanel.maxAmount = 0;
    }

    template <class... Options>
    void read(const Options&... options)
    {
        auto& [flags, bids, asks, lastPrice, lastVolume, minPrice, maxPrice, maxAmount] = m_realPanel;
        this->m_realAnswer = this->m_real->checkUpdate(flags, bids, asks, lastPrice, lastVolume, minPrice, maxPrice,
                                                       maxAmount, options...);
        this->m_naiveAnswer = this->m_naive->checkUpdate(m_naivePanel, options...);
    }

    template <class GetRows>
    void readSide(bool isBid, GetRows getRows)
    {
        RealPanel& panel = m_realPanel;
        ((*this->m_real).*getRows)(isBid ? panel.bids : panel.asks, panel.minPrice, panel.maxPrice, panel.maxAmount);
    }

    bool isSameKey() const
    {
        const int naive = this->m_naive->stock;
        return !this->m_real || this->m_real->getStockKey() == (naive < 0 ? QString() : stockKeyOf(naive));
    }

    void writeSurroundings(Lines& expected, Lines& real) const
    {
        expected.add(sections::kAnswer, {this->m_naiveAnswer, true});
        real.add(sections::kAnswer, {this->m_realAnswer, isSameKey()});
        writeState(expected, m_naivePanel);
        writeState(real, m_realPanel);
        writeState(expected, m_naiveManager);
        writeState(real, *m_realManager);
    }

    boost::shared_ptr<TC::CDepthThousandModelManager> m_realManager;
    NaiveManager m_naiveManager;
    RealPanel m_realPanel;
    NaivePanel m_naivePanel;
};

} // namespace tests::oracle
