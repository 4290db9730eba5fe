#include "bench/plate.h"

#include "indexui/tessimodel/cwatchplatewidget.h"
#include "quoter/transactioncount.h"
#include "standin/terminal.h"
#include "UiResource/uiresource.h"

#include <QApplication>
#include <QFont>
#include <QImage>
#include <QPaintEngine>
#include <QPainter>
#include <QPainterPath>
#include <QPen>
#include <QRegion>
#include <QString>
#include <QWidget>

#include <cstddef>
#include <cstdlib>
#include <memory>
#include <stdexcept>
#include <vector>

namespace bench {

namespace {

constexpr QSize kSize(340, 460);
constexpr QImage::Format kFormat = QImage::Format_RGB32;
constexpr std::size_t kSectors = 8;
// The grounds of widget, title, pie and table, eight squares, four cells.
constexpr std::size_t kRects = 16;
constexpr std::size_t kTexts = 36; // title, heading, two vertical titles, two summaries, eight lines of three

std::shared_ptr<quoter::TransactionCount> counts()
{
    auto record = std::make_shared<quoter::TransactionCount>();
    record->buyOrderCount = 1234;
    record->buyHuge = 23000;
    record->buyBig = 12000;
    record->buyMiddle = 8000;
    record->buySmall = 15000;
    record->sellOrderCount = 1511;
    record->sellHuge = 18000;
    record->sellBig = 14500;
    record->sellMiddle = 9000;
    record->sellSmall = 21000;
    return record;
}

// The primitives of a picture as they reach the screen, with colours and fonts at hand.
struct Primitives {
    struct Rect {
        QRectF rect;
        QPen pen;
        QBrush brush;
    };
    struct Path {
        QPainterPath path;
        QBrush brush;
    };
    struct Text {
        QPointF at;
        QString text;
        QFont font;
        QPen pen;
    };

    void draw(QPainter& painter) const
    {
        for (const Rect& rect : rects) {
            painter.setPen(rect.pen);
            painter.setBrush(rect.brush);
            painter.drawRect(rect.rect);
        }
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        for (const Path& path : paths) {
            painter.setBrush(path.brush);
            painter.drawPath(path.path);
        }
        painter.setRenderHint(QPainter::Antialiasing, false);
        for (const Text& text : texts) {
            painter.setFont(text.font);
            painter.setPen(text.pen);
            painter.drawText(text.at, text.text);
        }
    }

    std::vector<Rect> rects;
    std::vector<Path> paths;
    std::vector<Text> texts;
};

// Keeps what is drawn.
class KeepingEngine : public QPaintEngine {
public:
    explicit KeepingEngine(Primitives& kept)
        : QPaintEngine(AllFeatures)
        , m_kept(kept)
    {}

    bool begin(QPaintDevice*) override { return true; }
    bool end() override { return true; }
    void updateState(const QPaintEngineState&) override {}
    Type type() const override { return User; }

    void drawRects(const QRectF* rects, int count) override
    {
        for (int i = 0; i < count; ++i)
            m_kept.rects.push_back({rects[i], painter()->pen(), painter()->brush()});
    }
    void drawRects(const QRect* rects, int count) override
    {
        for (int i = 0; i < count; ++i)
            m_kept.rects.push_back({QRectF(rects[i]), painter()->pen(), painter()->brush()});
    }
    void drawPath(const QPainterPath& path) override { m_kept.paths.push_back({path, painter()->brush()}); }
    void drawTextItem(const QPointF& at, const QTextItem& item) override
    {
        m_kept.texts.push_back({at, item.text(), item.font(), painter()->pen()});
    }
    void drawPixmap(const QRectF&, const QPixmap&, const QRectF&) override {}

private:
    Primitives& m_kept;
};

// A canvas that keeps what is drawn instead of showing it.
class Keeper : public QImage {
public:
    Keeper(const QSize& size, Primitives& kept)
        : QImage(size, kFormat)
        , m_engine(kept)
    {}

    QPaintEngine* paintEngine() const override { return &m_engine; }

private:
    mutable KeepingEngine m_engine;
};

// Draws primitives and nothing else.
class PrimitivesWidget : public QWidget {
public:
    Primitives primitives;

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        primitives.draw(painter);
    }
};

// What the widget draws itself, on nothing.
void paint(QWidget& widget, QImage& canvas)
{
    widget.render(&canvas, QPoint(), QRegion(), QWidget::DrawChildren);
}

struct Panel {
    Panel()
    {
        plate.resize(kSize);
        plate.setTransactionCount({counts()});
        bare.resize(kSize);
        Keeper keeper(kSize, bare.primitives);
        paint(plate, keeper);
        const Primitives& kept = bare.primitives;
        if (kept.rects.size() != kRects || kept.paths.size() != kSectors || kept.texts.size() != kTexts)
            throw std::runtime_error("the plate consists of other primitives than it should");
    }

    int argc = 1;
    char name[6] = "bench";
    char* argv[2] = {name, nullptr};
    QApplication application{argc, argv};
    standin::Terminal terminal;
    TC::CWatchPlateWidget plate{nullptr};
    PrimitivesWidget bare;
    QImage canvas{kSize, kFormat};
};

Body prepare(QWidget& (*widgetOf)(Panel&))
{
    setenv("QT_QPA_PLATFORM", "offscreen", 1);
    auto panel = std::make_shared<Panel>();
    return {[panel, widgetOf](int times) {
        for (int i = 0; i < times; ++i)
            paint(widgetOf(*panel), panel->canvas);
        return times;
    }};
}

QWidget& plateOf(Panel& panel)
{
    return panel.plate;
}

QWidget& bareOf(Panel& panel)
{
    return panel.bare;
}

} // namespace

std::vector<Operation> plateOperations()
{
    constexpr int kPaints = 20;
    return {
        {"plate_repaint", [] { return prepare(plateOf); }, kPaints},
        {"plate_primitives", [] { return prepare(bareOf); }, kPaints},
    };
}

} // namespace bench
