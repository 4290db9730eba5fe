#pragma once

#include "indexui/tessimodel/cmodelquoterdepththousand.h"
#include "tests/support/thousandrecord.h"
#include "tests/tessimodel/bookfeed.h"
#include "tests/tessimodel/bookreading.h"
#include "tests/tessimodel/booktext.h"

#include <gtest/gtest.h>

#include <fmt/format.h>

#include <string>

namespace tests {

// A model of thousand-level snapshots whose single steps a test can take.
class QuoterThousand : public TC::CModelQuoterDepthThousand {
public:
    using CModelQuoterDepthThousand::CModelQuoterDepthThousand;
    using CModelQuoterDepthThousand::doQuoter;
    using CModelQuoterDepthThousand::doThousandData;
    using CModelQuoterDepthThousand::getAsks;
    using CModelQuoterDepthThousand::getAsksByQuoter;
    using CModelQuoterDepthThousand::getBids;
    using CModelQuoterDepthThousand::getBidsByQuoter;
};

// Which rows a poll asks for.
inline constexpr bool byRecord = false;
inline constexpr bool byQuoter = true;

// The rows of one poll, "no update" when there was nothing to read.
inline std::string bookText(TC::CModelQuoterDepthThousand& model, bool source = byRecord)
{
    const BookReading reading = readBook(model, source);
    return reading.updated ? bookText(reading.bids, reading.asks) : "no update";
}

// "10.00 -50, 10.02 7": what the model holds of changed prices. Zero has no sign.
inline std::string deltasText(const TC::CModelQuoterDepthThousand& model)
{
    std::string text;
    for (auto entry = model.m_priceDeltas.begin(); entry != model.m_priceDeltas.end(); ++entry)
        text += fmt::format("{}{:.2f} {}", text.empty() ? "" : ", ", entry.key() + 0.0, entry.value().first);
    return text;
}

class QuoterThousandTest : public ::testing::Test, protected FollowedModel<QuoterThousand> {
protected:
    // One bid at 10.00 with so many hands.
    void bidAt(const std::string& clock, int hands) { feed.thousand(live, {thousand(clock).bid(10.00, hands)}); }
};

} // namespace tests
