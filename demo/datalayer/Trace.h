// The visible trace of what is asked of the data layer.
#pragma once

#include "framework/com/Boundary.h"

#include <deque>
#include <optional>
#include <string>
#include <string_view>

namespace korvane::store
{

/// The last lines, each indented by the scopes and calls that it stands in.
class Trace
{
public:
    static constexpr std::size_t limit = 1000; ///< lines kept

    /// Adds a line and returns its number.
    std::size_t add(std::wstring text);

    /// Puts an outcome behind a line, unless the line is gone.
    void complete(std::size_t number, std::wstring_view outcome);

    void indent() noexcept { ++depth_; }
    void outdent() noexcept { --depth_; }

    void clear() noexcept;
    std::wstring text() const;

private:
    std::deque<std::wstring> lines_;
    std::size_t dropped_ = 0; ///< lines that were there before the first one kept
    std::size_t depth_ = 0;
};

// How values are written.
inline std::wstring shown(long number)
{
    return std::to_wstring(number);
}
inline std::wstring shown(bool flag)
{
    return flag ? L"True" : L"False";
}
inline std::wstring shown(std::wstring_view text)
{
    return L'"' + std::wstring(text) + L'"';
}
std::wstring shown(OleDate date);
std::wstring shown(const wchar_t* text) = delete; // it would count as a bool

/// A call or event with its arguments, for example: Groups.Update 4, "Staff", 3
inline std::wstring line(std::wstring_view name)
{
    return std::wstring(name);
}
template <class First, class... Others>
std::wstring line(std::wstring_view name, const First& first, const Others&... others)
{
    std::wstring result = std::wstring(name) + L' ' + shown(first);
    ((result += L", " + shown(others)), ...);
    return result;
}

std::wstring shown(const Failure& failure);

/// A line of the trace for as long as the call runs, which lines added meanwhile stand in.
class TracedCall
{
public:
    TracedCall(Trace& trace, std::wstring call) : trace_(trace), number_(trace.add(std::move(call)))
    {
        trace.indent();
    }
    TracedCall(const TracedCall&) = delete;
    TracedCall& operator=(const TracedCall&) = delete;
    ~TracedCall() { trace_.outdent(); }

    void gave(std::wstring_view outcome) { trace_.complete(number_, outcome); }

private:
    Trace& trace_;
    std::size_t number_;
};

/// Runs the body of a call and writes the call with its outcome to the trace. Show turns what the body gives
/// into text.
template <class Body, class Show> auto traced(Trace& trace, std::wstring call, Body&& body, Show&& show)
{
    TracedCall running(trace, std::move(call));
    std::optional<decltype(body())> result;
    if (const auto failure = attempt([&] { result.emplace(body()); }))
    {
        running.gave(shown(*failure));
        throw *failure;
    }
    running.gave(show(*result));
    return std::move(*result);
}

/// As above, for an outcome that is a plain value.
template <class Body> auto traced(Trace& trace, std::wstring call, Body&& body)
{
    return traced(trace, std::move(call), std::forward<Body>(body),
                  [](const auto& value) { return L"= " + shown(value); });
}

/// As above, for a call without a result.
template <class Body> void tracedCall(Trace& trace, std::wstring call, Body&& body)
{
    const auto succeeds = [&] { return body(), true; };
    traced(trace, std::move(call), succeeds, [](bool) { return std::wstring(); });
}

/// Answers a call of a client with what its body gives, and shows both: answered(result, trace, [&] { return
/// table.remove(id); }, L"Groups.Remove", id)
template <class Result, class Body, class... Arguments>
HRESULT answered(Result* result, Trace& trace, const Body& body, std::wstring_view call,
                 const Arguments&... arguments)
{
    return returns(result, [&] { return traced(trace, line(call, arguments...), body); });
}

/// The same for a call without a result.
template <class Body, class... Arguments>
HRESULT performed(Trace& trace, const Body& body, std::wstring_view call, const Arguments&... arguments)
{
    return guard([&] { tracedCall(trace, line(call, arguments...), body); });
}

} // namespace korvane::store
