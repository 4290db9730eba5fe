#pragma once

#include <QColor>
#include <QPaintDevice>
#include <QRectF>
#include <QString>

#include <functional>
#include <memory>
#include <string>
#include <vector>

class QPaintEngine;

// A terminal whose fonts have the height that a test wants, whose colours differ for each key, and a device that notes
// in words what is drawn on it. An executable that links platenotes.cpp has this terminal instead of the stand-in's
// fonts, colours, texts and bus.
namespace tests {

// Height of "fnt_default_normal_heavy", 10 at first. "fnt_default_normal" is 4 lower where there is room, so that it
// matters which is used.
void setHeavyTextHeight(int height);

// Is told each key of a colour that CUiResource is asked for, until it is set anew; nothing at first.
void setColorListener(std::function<void(const QString&)> listener);

// What CUiResource was asked for and does not have: no key but those of the plate may be used.
const std::vector<std::string>& unknownKeys();

// What CBaseWidget::handleEvent was given last, "7 2 3 text" and the payload; it answers yes to event 7 only.
struct BusEvent {
    std::string text;
    void* payload = nullptr;
};
const BusEvent& lastBusEvent();

// One line for each thing drawn, in order:
//   "fill 0,0 300x400 ic_clr_watchplate_bg", left and top, width and height
//   "frame 0,26 20x65 ic_clr_watchplate_splitter 1"; "cosmetic" follows for a pen of one device pixel
//   "sector of 150,130 radius 109.3 from 90 over 36 ic_clr_watchplate_line4 smooth", degrees counter-clockwise from
//       three o'clock; "smooth" when antialiased
//   "text 特大 at 40,56 20x10 fnt_default_normal_heavy ic_clr_entrust_default_text", the box of its characters;
//       "cut" follows when the box is outside the text's rectangle
class NotedDrawing : public QPaintDevice {
public:
    explicit NotedDrawing(const QSize& size);
    ~NotedDrawing() override;

    QPaintEngine* paintEngine() const override;
    void note(const std::string& line) { m_notes.push_back(line); }

    const std::vector<std::string>& notes() const { return m_notes; }

    // The texts that were not drawn as one line, whatever is in them.
    std::vector<QString> foldableTexts;

protected:
    int metric(PaintDeviceMetric metric) const override;

private:
    const QSize m_size;
    std::unique_ptr<QPaintEngine> m_engine;
    std::vector<std::string> m_notes;
};

// Where notes differ, line by line; empty when nowhere.
std::string differences(const std::vector<std::string>& drawn, const std::vector<std::string>& expected);

// Lines as NotedDrawing writes them, for what a test expects.
std::string fillNote(const QRectF& rect, const std::string& key);
std::string frameNote(const QRectF& rect, const std::string& key);
std::string sectorNote(const QPointF& centre, double radius, double from, double over, const std::string& key);
std::string textNote(const QString& text, const QPointF& topLeft, const std::string& font, const std::string& key);

// The box of a text in the terminal of platenotes.cpp: Chinese characters as wide as high, others half as wide.
QSizeF noteTextSize(const QString& text, const std::string& font);

} // namespace tests
