#pragma once

class Databases;
class Dialogs;
class PassProgress;
class StatusLine;
struct Session;

// The year-end zero of every vendor's YTD purchases, after a confirmation; a few milliseconds
// of vendors per transaction, so that other users wait for one such batch at most.
class YearEndZero {
public:
    struct Services {
        Dialogs &dialogs;
        Databases &databases;
        Session &session;
        StatusLine &status;
        PassProgress &progress;
    };
    explicit YearEndZero(Services services) : m_s(services) {}

    // True when the user confirmed and the totals were zeroed.
    bool run();

private:
    Services m_s;
};
