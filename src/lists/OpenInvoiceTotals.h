#pragma once

#include <QtGlobal>

class Clock;
class CurrentVendor;
class Databases;
class StatusLine;

// The vendor's open-invoice total and this year's invoiced total, kept for the display and the
// save. They outlive one display on purpose: the display stamps the previous vendor's totals.
class OpenInvoiceTotals {
public:
    OpenInvoiceTotals(const CurrentVendor &vendor, Databases &dbs, const Clock &clock,
                      StatusLine &status) :
        m_vendor(vendor),
        m_dbs(dbs), m_clock(clock), m_status(status)
    {
    }

    // Computes both totals for the vendor on the screen, saying so in the status line meanwhile.
    // A number below 1 leaves the totals as they were (and the status line on its retrieving
    // message).
    void compute();

    double openTotal() const { return m_openTotal; }
    double yearTotal() const { return m_yearTotal; }

private:
    const CurrentVendor &m_vendor;
    Databases &m_dbs;
    const Clock &m_clock;
    StatusLine &m_status;
    double m_openTotal = 0.0;
    double m_yearTotal = 0.0;
    qint64 m_lastMsecs = 0; // how long the last computation took
};
