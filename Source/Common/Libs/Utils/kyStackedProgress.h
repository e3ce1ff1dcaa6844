#pragma once

#include <functional>
#include <string>

/// A progress on the stack: it runs from its construction to its destruction.
///
/// The work has a total, in units of the caller's choice. `incrementBy(x)` counts x times the
/// scale as done; the scale is 1 until it is set. A run in phases makes a progress of total 1,
/// sets the scale to the share of the next phase and reports each phase from 0 to 1.
///
/// A progress made while another one runs is nested: its way from 0 to its total fills the share
/// that the outer one has set as its scale. Progresses end in the reverse order of their making.
///
/// The application watches through `setObserver` and stops the work through `requestCancel`.
class kyStackedProgress
{
public:
    using Handler = std::function<void(const kyStackedProgress&)>;

    /// total    above 0; any other value makes a progress that stays at 0
    /// handler  told what an observer is told, but of this progress alone; null for none
    kyStackedProgress(std::string name, double total, Handler handler = nullptr);
    ~kyStackedProgress();
    kyStackedProgress(const kyStackedProgress&) = delete;
    kyStackedProgress& operator=(const kyStackedProgress&) = delete;

    /// The share of the whole that one unit of the following increments stands for.
    void setScale(double scale);
    /// A line for the user about what is being done.
    void setState(const std::string& text);
    /// An increment that is not a finite number is passed over.
    void incrementBy(double increment);

    const std::string& name() const { return name_; }
    const std::string& state() const { return state_; }
    /// What is done, 0 to 1.
    double fraction() const;
    /// Null for an outermost progress.
    const kyStackedProgress* outer() const { return outer_; }
    /// False once, as the last that an observer hears of a progress.
    bool running() const { return running_; }

    /// Has somebody asked the running work to stop?
    bool cancelled() const;

    /// Asks the running work, or the work that starts next, to stop. The request holds until an
    /// outermost progress ends. May be called from any thread and from a signal handler.
    static void requestCancel();

    /// Told, on the thread of the work, when a progress begins, whenever its state or what is done
    /// changes, nested progresses included, and when it ends. Must not throw. Null for none, as at
    /// the start.
    static void setObserver(Handler observer);

private:
    void tell() const;

    std::string name_;
    std::string state_;
    double total_;
    double scale_ = 1.0;
    double done_ = 0.0;
    bool running_ = true;
    Handler handler_;
    kyStackedProgress* outer_;
};
