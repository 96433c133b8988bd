#pragma once

#include "reports/FormPlacement.h"

#include <QSizeF>
#include <QString>

#include <vector>

class LayoutDocument;

// One page of 1099 forms as the next run prints it from a layout: every form of the page filled
// with a sample payer and vendor, and the check that every element lands on the paper.
class FormPage {
public:
    // The paper of the printer set-up (Letter, Legal or A4), in inches.
    static QSizeF paperInches(const QString &paper);

    FormPage(const LayoutDocument &document, int kind, QSizeF paperInches);

    int kind() const { return m_kind; }
    QSizeF paper() const { return m_paper; }
    int formsPerPage() const { return FormPlacement::formsPerPage(m_kind); }
    // The sample items of every form of the page, in twips from the paper's corner. On 1099-MISC
    // the amount is also shown at element 14, where a type 4 vendor's amount goes.
    const std::vector<FormPlacement::Item> &items() const { return m_items; }

    struct Outside {
        int element;
        QString why; // "prints 11.20 inches down on the third form, below the 11-inch paper"
    };
    // The elements that land off the paper on some form of the page, each once, by number.
    std::vector<Outside> outside() const;
    // Of them, those not in `before` (the elements a change sends off the paper).
    std::vector<Outside> newlyOutside(const std::vector<Outside> &before) const;

    // "Element 11 (Recipient's name) prints ... paper"
    static QString describe(const LayoutDocument &document, const Outside &outside);
    // Why the change from `before` to `after` cannot be kept: the first element it sends off the
    // paper, described; empty when it can.
    static QString changeProblem(const LayoutDocument &before, const LayoutDocument &after,
                                 int kind, QSizeF paperInches);
    // Why a layout cannot be saved or test-printed as it is: its elements off the paper; empty
    // when it can.
    QString problem() const;

private:
    const LayoutDocument &m_document;
    int m_kind;
    QSizeF m_paper;
    std::vector<FormPlacement::Item> m_items;
    std::vector<int> m_formOf; // the form (0, 1, 2) of each item
};
