#pragma once

#include "reports/FormPlacement.h"

#include <QImage>
#include <QWidget>

#include <vector>

// The drawn page: the paper (over the scanned form when one is chosen), the borders between the
// forms, the sample items where the next run prints them and a numbered mark at each element of
// the first form. An element's mark or sample text can be dragged: the element then moves by
// hundredths of an inch, together with the other elements chosen with it (the payer's lines of a
// 1099-NEC move as one block), and the border below the first form moves the form spacing.
class LayoutPageView : public QWidget {
    Q_OBJECT
public:
    struct Mark {
        int element;
        double xInches; // on the paper: the origin added
        double yInches;
    };

    explicit LayoutPageView(QWidget *parent = nullptr);

    void setPage(QSizeF paperInches, int forms, double spacingInches, std::vector<Mark> marks,
                 std::vector<FormPlacement::Item> items);
    void setScan(const QImage &scan);
    // The elements chosen (in the table), drawn in red and dragged together.
    void choose(const QList<int> &elements);
    const QList<int> &chosen() const { return m_chosen; }
    double pixelsPerInch() const { return m_scale; }
    // Where an element's mark is drawn, in the widget.
    QPoint markAt(int element) const;
    // Where the border below the first form is drawn, in the widget.
    int spacingLineY() const;

    QSize sizeHint() const override;

signals:
    void elementChosen(int element);
    // The chosen elements dragged by that many inches across and down (hundredths).
    void elementsDragged(const QList<int> &elements, double acrossInches, double downInches);
    void spacingDragged(double inches);

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;

private:
    QPointF toPixels(double xInches, double yInches) const;
    int elementAt(QPoint at) const;

    QSizeF m_paper{8.5, 11};
    int m_forms = 1;
    double m_spacing = 0;
    std::vector<Mark> m_marks;
    std::vector<FormPlacement::Item> m_items;
    QImage m_scan;
    QList<int> m_chosen;
    double m_scale = 72; // pixels per inch
    static constexpr int margin = 12;

    enum class Drag { None, Element, Spacing };
    Drag m_drag = Drag::None;
    QPoint m_dragStart;
    std::vector<Mark> m_startMarks;
    double m_startSpacing = 0;
};
