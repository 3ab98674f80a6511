// What a container stores of a dialog, and how it draws one that is not active.
#include "tests/framework/Fakes.h"
#include "tests/framework/TestDialog.h"

#include <gmock/gmock.h>

#include <cstring>

namespace korvane::test
{

namespace
{

ComPtr<IStream> emptyStream()
{
    ComPtr<IStream> stream;
    require(CreateStreamOnHGlobal(nullptr, TRUE, stream.put()));
    return stream;
}

void rewind(const ComPtr<IStream>& stream)
{
    require(stream->Seek({}, STREAM_SEEK_SET, nullptr));
}

class PropertyBag final : public Object<PropertyBag, Inherits<IPropertyBag>, IPropertyBag>
{
public:
    STDMETHODIMP Read(LPCOLESTR readName, VARIANT* value, IErrorLog*) override
    {
        if (!written || name != readName)
            return missing;
        VariantClear(value);
        return VariantCopy(value, const_cast<VARIANT*>(&stored.get()));
    }
    STDMETHODIMP Write(LPCOLESTR writtenName, VARIANT* value) override
    {
        name = writtenName;
        stored = Variant::valueOf(*value);
        written = true;
        return S_OK;
    }

    bool written = false;
    std::wstring name;
    Variant stored;
    HRESULT missing = E_INVALIDARG;
};

/// A stream that takes and gives less than it is asked for.
class ShortStream final : public Object<ShortStream, Inherits<IStream>, IStream>
{
public:
    STDMETHODIMP Read(void* bytes, ULONG size, ULONG* read) override
    {
        std::memset(bytes, 1, size / 2);
        *read = size / 2;
        return S_FALSE;
    }
    STDMETHODIMP Write(const void*, ULONG size, ULONG* written) override
    {
        if (written)
            *written = size / 2;
        return S_OK;
    }
    STDMETHODIMP Seek(LARGE_INTEGER, DWORD, ULARGE_INTEGER*) override { return E_NOTIMPL; }
    STDMETHODIMP SetSize(ULARGE_INTEGER) override { return E_NOTIMPL; }
    STDMETHODIMP CopyTo(IStream*, ULARGE_INTEGER, ULARGE_INTEGER*, ULARGE_INTEGER*) override
    {
        return E_NOTIMPL;
    }
    STDMETHODIMP Commit(DWORD) override { return E_NOTIMPL; }
    STDMETHODIMP Revert() override { return E_NOTIMPL; }
    STDMETHODIMP LockRegion(ULARGE_INTEGER, ULARGE_INTEGER, DWORD) override { return E_NOTIMPL; }
    STDMETHODIMP UnlockRegion(ULARGE_INTEGER, ULARGE_INTEGER, DWORD) override { return E_NOTIMPL; }
    STDMETHODIMP Stat(STATSTG*, DWORD) override { return E_NOTIMPL; }
    STDMETHODIMP Clone(IStream**) override { return E_NOTIMPL; }
};

/// A picture of the dialog, drawn as a container draws a control that is not active.
class Drawing
{
public:
    static constexpr COLORREF paper = RGB(255, 0, 255);

    explicit Drawing(SIZE extent) : extent_(extent)
    {
        const HDC screen = GetDC(nullptr);
        context = CreateCompatibleDC(screen);
        bitmap_ = CreateCompatibleBitmap(screen, extent.cx, extent.cy);
        ReleaseDC(nullptr, screen);
        former_ = SelectObject(context, bitmap_);
        const RECT all{0, 0, extent.cx, extent.cy};
        const HBRUSH brush = CreateSolidBrush(paper);
        FillRect(context, &all, brush);
        DeleteObject(brush);
    }
    Drawing(const Drawing&) = delete;
    Drawing& operator=(const Drawing&) = delete;
    ~Drawing()
    {
        SelectObject(context, former_);
        DeleteObject(bitmap_);
        DeleteDC(context);
    }

    HRESULT draw(IViewObject2& object, DWORD aspect = DVASPECT_CONTENT) const
    {
        return drawIn(object, {0, 0, extent_.cx, extent_.cy}, aspect);
    }

    /// @param bounds in the mapping of the context.
    HRESULT drawIn(IViewObject2& object, const RECTL& bounds, DWORD aspect = DVASPECT_CONTENT) const
    {
        return object.Draw(aspect, -1, nullptr, nullptr, nullptr, context, &bounds, nullptr, nullptr, 0);
    }

    void forgetMapping() const
    {
        ModifyWorldTransform(context, nullptr, MWT_IDENTITY);
        SetMapMode(context, MM_TEXT);
        SetWindowOrgEx(context, 0, 0, nullptr);
        SetViewportOrgEx(context, 0, 0, nullptr);
    }

    COLORREF centre(const RECT& place) const
    {
        return GetPixel(context, (place.left + place.right) / 2, (place.top + place.bottom) / 2);
    }

    int barePixels() const
    {
        int bare = 0;
        for (int y = 0; y < extent_.cy; y += 3)
            for (int x = 0; x < extent_.cx; x += 3)
                bare += GetPixel(context, x, y) == paper;
        return bare;
    }

    HDC context;

private:
    SIZE extent_;
    HBITMAP bitmap_;
    HGDIOBJ former_;
};

class DialogStateTests : public DialogTest
{
protected:
    bool enabled(const ComPtr<TestDialog>& of)
    {
        VARIANT_BOOL value = 0x55;
        EXPECT_EQ(of->get_Enabled(&value), S_OK);
        return value == VARIANT_TRUE;
    }

    ComPtr<IPersistStreamInit> stream = dialog.as<IPersistStreamInit>();
    ComPtr<IPersistPropertyBag> bag = dialog.as<IPersistPropertyBag>();
    ComPtr<TestDialog> other = make<TestDialog>();
};

} // namespace

TEST_F(DialogStateTests, ANewDialogIsEnabledAndNotDirty)
{
    EXPECT_EQ(stream->InitNew(), S_OK);
    EXPECT_TRUE(enabled(dialog));
    EXPECT_EQ(stream->IsDirty(), S_FALSE);
    CLSID id{};
    EXPECT_EQ(stream->GetClassID(&id), S_OK);
    EXPECT_EQ(id, *TestDialog::classId());
}

TEST_F(DialogStateTests, ADialogThatIsMadeNewIsEnabledWhateverItWas)
{
    ASSERT_TRUE(show());
    EXPECT_EQ(dialog->put_Enabled(VARIANT_FALSE), S_OK);
    EXPECT_EQ(stream->InitNew(), S_OK);
    EXPECT_TRUE(IsWindowEnabled(container.dialogWindow()));
    EXPECT_EQ(stream->IsDirty(), S_FALSE);
}

TEST_F(DialogStateTests, AStreamBringsTheStateBack)
{
    EXPECT_EQ(dialog->put_Enabled(VARIANT_FALSE), S_OK);
    EXPECT_EQ(stream->IsDirty(), S_OK);
    const auto stored = emptyStream();
    EXPECT_EQ(stream->Save(stored.get(), FALSE), S_OK);
    EXPECT_EQ(stream->IsDirty(), S_OK);
    rewind(stored);
    EXPECT_EQ(stream->Save(stored.get(), TRUE), S_OK);
    EXPECT_EQ(stream->IsDirty(), S_FALSE);

    STATSTG statistics{};
    EXPECT_EQ(stored->Stat(&statistics, STATFLAG_NONAME), S_OK);
    ULARGE_INTEGER largest{};
    EXPECT_EQ(stream->GetSizeMax(&largest), S_OK);
    EXPECT_LE(statistics.cbSize.QuadPart, largest.QuadPart);

    rewind(stored);
    EXPECT_EQ(other.as<IPersistStreamInit>()->Load(stored.get()), S_OK);
    EXPECT_FALSE(enabled(other));
    EXPECT_EQ(other.as<IPersistStreamInit>()->IsDirty(), S_FALSE);
}

TEST_F(DialogStateTests, AStreamThatHoldsSomethingElseIsRefused)
{
    EXPECT_TRUE(FAILED(stream->Load(emptyStream().get())));
    const auto stored = emptyStream();
    const DWORD unknown[] = {4711, 0};
    require(stored->Write(unknown, sizeof unknown, nullptr));
    rewind(stored);
    EXPECT_TRUE(FAILED(stream->Load(stored.get())));
    EXPECT_TRUE(enabled(dialog));
}

TEST_F(DialogStateTests, APropertyBagBringsTheStateBack)
{
    const auto stored = make<PropertyBag>();
    EXPECT_EQ(dialog->put_Enabled(VARIANT_FALSE), S_OK);
    EXPECT_EQ(bag->Save(stored.get(), TRUE, TRUE), S_OK);
    EXPECT_EQ(stored->name, L"Enabled");
    EXPECT_EQ(stored->stored.type(), VT_BOOL);
    EXPECT_EQ(stream->IsDirty(), S_FALSE);
    EXPECT_EQ(other.as<IPersistPropertyBag>()->Load(stored.get(), nullptr), S_OK);
    EXPECT_FALSE(enabled(other));
}

TEST_F(DialogStateTests, AnEmptyPropertyBagIsADialogAsDesigned)
{
    EXPECT_EQ(dialog->put_Enabled(VARIANT_FALSE), S_OK);
    EXPECT_EQ(bag->Load(make<PropertyBag>().get(), nullptr), S_OK);
    EXPECT_TRUE(enabled(dialog));
}

TEST_F(DialogStateTests, WhatAPropertyBagAnswersIsConvertedOrRefused)
{
    const auto stored = make<PropertyBag>();
    stored->written = true;
    stored->name = L"Enabled";
    const auto load = [&](Variant answer) {
        stored->stored = std::move(answer);
        return bag->Load(stored.get(), nullptr);
    };
    EXPECT_EQ(load(Variant(Bstr(L"0"))), S_OK);
    EXPECT_FALSE(enabled(dialog));
    EXPECT_EQ(load(Variant(1L)), S_OK);
    EXPECT_TRUE(enabled(dialog));
    EXPECT_EQ(load(Variant(0L)), S_OK);
    EXPECT_FALSE(enabled(dialog));
    EXPECT_EQ(load(Variant(Bstr(L"perhaps"))), DISP_E_TYPEMISMATCH);
    EXPECT_FALSE(enabled(dialog));
    EXPECT_TRUE(FAILED(load(Variant(make<HostResources>().as<IDispatch>())))); // released, or it stays alive
    EXPECT_FALSE(enabled(dialog));
    EXPECT_EQ(load(Variant()), S_OK); // as if there were none
    EXPECT_TRUE(enabled(dialog));
}

TEST_F(DialogStateTests, AStreamThatEndsTooEarlyIsRefused)
{
    EXPECT_EQ(dialog->put_Enabled(VARIANT_FALSE), S_OK);
    const auto shortStream = make<ShortStream>();
    EXPECT_TRUE(FAILED(stream->Load(shortStream.get())));
    EXPECT_FALSE(enabled(dialog));
    EXPECT_EQ(stream->Save(shortStream.get(), TRUE), STG_E_MEDIUMFULL);
    EXPECT_EQ(stream->IsDirty(), S_OK);
}

TEST_F(DialogStateTests, ADisabledDialogTakesNoInput)
{
    ASSERT_TRUE(show());
    EXPECT_TRUE(IsWindowEnabled(container.dialogWindow()));
    EXPECT_EQ(dialog->put_Enabled(VARIANT_FALSE), S_OK);
    EXPECT_FALSE(IsWindowEnabled(container.dialogWindow()));
    EXPECT_EQ(dialog->put_Enabled(VARIANT_TRUE), S_OK);
    EXPECT_TRUE(IsWindowEnabled(container.dialogWindow()));
}

TEST_F(DialogStateTests, ADialogDrawsItselfWhereItIsAsked)
{
    ASSERT_TRUE(show());
    container.pump();
    const Drawing drawing(size());
    EXPECT_EQ(drawing.draw(*dialog), S_OK);
    EXPECT_EQ(GetPixel(drawing.context, 1, 1), GetSysColor(COLOR_BTNFACE));
    EXPECT_EQ(drawing.barePixels(), 0);
}

TEST_F(DialogStateTests, ADrawnDialogShowsItsControls)
{
    ASSERT_TRUE(show());
    container.pump();
    const Drawing drawing(size());
    EXPECT_EQ(drawing.draw(*dialog), S_OK);
    EXPECT_EQ(drawing.centre(container.place(dialog->txtInner.window())), GetSysColor(COLOR_WINDOW));
    EXPECT_EQ(drawing.centre(container.place(dialog->lstInner.window())), GetSysColor(COLOR_WINDOW));
}

/// How a container has its context when it asks for a drawing in the left upper quarter of the bitmap.
struct Mapping
{
    const char* name;
    void (*set)(HDC context, SIZE half);
    RECTL (*bounds)(SIZE half);
};

class MappedDrawingTests : public DialogStateTests, public testing::WithParamInterface<Mapping>
{
};

TEST_P(MappedDrawingTests, TheBoundsAreThoseOfTheContainersMapping)
{
    ASSERT_TRUE(show());
    container.pump();
    const SIZE half{size().cx / 2, size().cy / 2};
    const Drawing drawing(size());
    GetParam().set(drawing.context, half);
    EXPECT_EQ(drawing.drawIn(*dialog, GetParam().bounds(half)), S_OK);
    // The container's mapping is as it was.
    POINT corner{GetParam().bounds(half).left, GetParam().bounds(half).top};
    LPtoDP(drawing.context, &corner, 1);
    EXPECT_EQ(corner.x, 0);
    EXPECT_EQ(corner.y, 0);
    drawing.forgetMapping();
    RECT list = container.place(dialog->lstInner.window());
    EXPECT_EQ(GetPixel(drawing.context, (list.left + list.right) / 4, (list.top + list.bottom) / 4),
              GetSysColor(COLOR_WINDOW));
    EXPECT_EQ(GetPixel(drawing.context, 1, 1), GetSysColor(COLOR_BTNFACE));
    EXPECT_EQ(GetPixel(drawing.context, half.cx - 2, half.cy - 2), GetSysColor(COLOR_BTNFACE));
    EXPECT_EQ(GetPixel(drawing.context, half.cx + 2, half.cy - 2), Drawing::paper);
    EXPECT_EQ(GetPixel(drawing.context, half.cx - 2, half.cy + 2), Drawing::paper);
}

constexpr Mapping mappings[] = {
    {"pixels", [](HDC, SIZE) {}, [](SIZE half) { return RECTL{0, 0, half.cx, half.cy}; }},
    {"offset", [](HDC context, SIZE) { SetViewportOrgEx(context, -30, -20, nullptr); },
     [](SIZE half) { return RECTL{30, 20, 30 + half.cx, 20 + half.cy}; }},
    {"scrolled", [](HDC context, SIZE) { SetWindowOrgEx(context, 300, 200, nullptr); },
     [](SIZE half) { return RECTL{300, 200, 300 + half.cx, 200 + half.cy}; }},
    {"scaled",
     [](HDC context, SIZE half) {
         SetMapMode(context, MM_ANISOTROPIC);
         SetWindowExtEx(context, 1000, -1000, nullptr); // upwards, as metric modes go
         SetViewportExtEx(context, half.cx, half.cy, nullptr);
     },
     [](SIZE) { return RECTL{0, 0, 1000, -1000}; }},
    {"transformed",
     [](HDC context, SIZE) {
         SetGraphicsMode(context, GM_ADVANCED);
         const XFORM larger{2, 0, 0, 2, -40, -20};
         SetWorldTransform(context, &larger);
     },
     [](SIZE half) { return RECTL{20, 10, 20 + half.cx / 2, 10 + half.cy / 2}; }},
};

INSTANTIATE_TEST_SUITE_P(Container, MappedDrawingTests, testing::ValuesIn(mappings),
                         [](const auto& test) { return std::string(test.param.name); });

TEST_F(DialogStateTests, AMetafileIsDrawnInTheWindowThatItHas)
{
    ASSERT_TRUE(show());
    const HDC context = CreateMetaFileW(nullptr);
    const RECTL whole{0, 0, 2000, 2000};
    const RECTL quarter{1000, 1000, 2000, 2000};
    EXPECT_EQ(
        dialog->Draw(DVASPECT_CONTENT, -1, nullptr, nullptr, nullptr, context, &quarter, &whole, nullptr, 0),
        S_OK);
    const HMETAFILE drawn = CloseMetaFile(context);
    const Drawing drawing(size());
    SetMapMode(drawing.context, MM_ANISOTROPIC);
    SetViewportExtEx(drawing.context, size().cx, size().cy, nullptr);
    EXPECT_TRUE(PlayMetaFile(drawing.context, drawn));
    DeleteMetaFile(drawn);
    drawing.forgetMapping();
    EXPECT_EQ(GetPixel(drawing.context, size().cx / 2 - 2, size().cy / 2 - 2), Drawing::paper);
    EXPECT_EQ(GetPixel(drawing.context, size().cx / 2 + 2, size().cy / 2 + 2), GetSysColor(COLOR_BTNFACE));
}

TEST_F(DialogStateTests, ADialogWithoutAWindowDrawsItsGround)
{
    const Drawing drawing({60, 60});
    EXPECT_EQ(drawing.draw(*dialog), S_OK);
    EXPECT_EQ(GetPixel(drawing.context, 30, 30), GetSysColor(COLOR_BTNFACE));
    EXPECT_EQ(drawing.barePixels(), 0);
}

TEST_F(DialogStateTests, OnlyTheContentIsDrawn)
{
    const Drawing drawing({60, 60});
    EXPECT_EQ(drawing.draw(*dialog, DVASPECT_ICON), DV_E_DVASPECT);
    EXPECT_EQ(GetPixel(drawing.context, 30, 30), Drawing::paper);
}

} // namespace korvane::test
