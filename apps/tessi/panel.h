#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace recording {
class DataLayer;
struct RecordedDay;
} // namespace recording

namespace tessi {

class Table;

// What a panel is asked for is not in the day.
class NotInTheDay : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// A view of the terminal over a day that is replayed: it follows the day's instrument with a model, subscribes what
// the model needs, and shows the model's rows once the day has been delivered and all strands are idle.
class Panel {
public:
    virtual ~Panel() = default;
    virtual void subscribe(recording::DataLayer& data) = 0;

    // Throws NotInTheDay.
    virtual Table rows() = 0;

    // What to tell when there are no rows, in a few words.
    virtual std::string whyEmpty() const = 0;

    // What the day lacks for the rows to be whole, in a few words; empty for nothing.
    virtual std::string note() const { return {}; }

    // A line above the rows, when there are any, for people; empty for none.
    virtual std::string head() const { return {}; }

    // A line of figures below the rows, when there are any, for people; empty for none.
    virtual std::string foot() const { return {}; }

    // What head and foot tell that rows for programs do not, when there are any; empty for nothing.
    virtual std::string noteForPrograms() const { return {}; }
};

// What the command line says beyond the panel's name. Each belongs to some panels only.
struct PanelOptions {
    std::optional<std::size_t> depth;      // book, thousand, queue10: best levels of each side; all without it
    std::optional<std::string> side;       // queue: "bid" or "ask"; orders, cancels: "buy" or "sell"
    std::optional<double> price;           // queue
    std::optional<int> minHands;           // orders, cancels, trades
    std::optional<int> minAmount;          // the same; in the instrument's currency
    std::optional<std::string> connective; // with both of these: "and" or "or"
    std::optional<std::string> from;       // orders, cancels, trades, view, plate: "HH:MM:SS", included
    std::optional<std::string> to;
    bool byQuoter = false;           // thousand: the level-2 snapshot's levels
    bool level1 = false;             // status: five levels, also where the day has level 2
    std::optional<std::string> at;   // params, status: "HH:MM:SS", included
    std::optional<int> today;        // params: the terminal's last trading day as yyyymmdd, later than the recorded one
    bool level2 = false;             // params: the rows of the whole book
    std::optional<std::string> png;  // plate: the picture's file
    std::optional<std::string> size; // of the picture, "WIDTHxHEIGHT"
    std::optional<std::string> theme; // "dark" or "light"
    std::optional<double> scale;      // its pixels for one of the size
};

std::vector<std::string> panelNames();

// What the options lack for the panel of that name, or have that is not the panel's; empty when they fit. Without a
// name none fits.
std::string optionFault(const std::string& name, const PanelOptions& options);

// The panel of that name for the day, whose instrument the terminal knows by now. The options fit. Null for an unknown
// name.
std::unique_ptr<Panel> makePanel(const std::string& name, const recording::RecordedDay& day,
                                 const PanelOptions& options);

} // namespace tessi
