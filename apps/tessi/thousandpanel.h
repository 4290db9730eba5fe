#pragma once

#include "apps/tessi/followedbook.h"
#include "apps/tessi/panel.h"

#include <cstddef>
#include <optional>
#include <string>

namespace tessi {

// The ladder of the book from the latest thousand-level snapshot; or, with --by-quoter, of the ten levels of the
// latest level-2 snapshot.
class ThousandPanel : public Panel {
public:
    ThousandPanel(const recording::RecordedDay& day, const PanelOptions& options);

    void subscribe(recording::DataLayer& data) override { m_book.subscribe(data); }
    Table rows() override;
    std::string whyEmpty() const override { return m_whyEmpty; }
    std::string note() const override { return m_note; }
    std::string foot() const override;

private:
    FollowedSnapshotBook m_book;
    std::optional<std::size_t> m_depth;
    bool m_byQuoter;
    std::string m_whyEmpty;
    std::string m_note;
};

} // namespace tessi
