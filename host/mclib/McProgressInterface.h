#pragma once
// McProgressInterface: what a long computation reports to whoever shows its progress.

class McProgressInterface {
  public:
    virtual ~McProgressInterface() = default;
    // Starts a busy phase described by a printf-style text.
    virtual void startWorking(char const* format, ...) __attribute__((format(printf, 2, 3))) = 0;
    virtual void stopWorking() = 0;
    // Fraction done, 0 to 1.
    virtual void setProgressValue(float value) = 0;
    // True once the user asked to stop the computation.
    virtual bool wasInterrupted() { return false; }
};
