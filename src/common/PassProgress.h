#pragma once

#include <QString>

// How a long pass over the vendor file shows that it goes on: the number done out of the number
// to do, the window kept painted, and nothing else started by the user meanwhile.
class PassProgress {
public:
    virtual ~PassProgress() = default;
    virtual void begin(int total) = 0;
    // Records done so far; now and then the window is painted again.
    virtual void advance(int done) = 0;
    virtual void end() = 0;
};

// Begins a pass for a scope and ends it however the scope is left.
class PassScope {
public:
    PassScope(PassProgress &progress, int total) : m_progress(progress) { m_progress.begin(total); }
    ~PassScope() { m_progress.end(); }
    PassScope(const PassScope &) = delete;
    PassScope &operator=(const PassScope &) = delete;

private:
    PassProgress &m_progress;
};
