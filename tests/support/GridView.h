// A grid as assistive technology sees it, and a user's clicks on it.
#pragma once

#include "framework/com/ComPtr.h"
#include "framework/com/Platform.h"

#include <oleacc.h>

#include <string>
#include <utility>
#include <vector>

namespace korvane::test
{

/// An element of what a window shows to assistive technology: an object, or a child of one that has no object.
struct Element
{
    ComPtr<IAccessible> object;
    long child = CHILDID_SELF;

    static Element ofWindow(HWND window);

    std::wstring name() const;
    std::wstring value() const;
    long role() const;
    long state() const;
    RECT place() const; ///< on the screen
    std::vector<Element> children() const;
};

class GridView
{
public:
    explicit GridView(HWND window) : window_(window) {}

    HWND window() const { return window_; }
    int rows() const;
    Element row(int row) const;
    Element cell(int row, int column) const;
    std::wstring text(int row, int column) const { return cell(row, column).value(); }
    /// The texts of the data rows behind the fixed column.
    std::vector<std::pair<std::wstring, std::wstring>> texts() const;
    /// Row and column of the current cell.
    std::pair<int, int> current() const;
    RECT place(int row, int column) const; ///< on the grid's window
    void click(int row, int column) const;

private:
    HWND window_;
};

} // namespace korvane::test
