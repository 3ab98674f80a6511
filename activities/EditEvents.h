// The command that adds, changes and deletes activities.
#pragma once

#include "activities/Activity.h"

#include <KorvaneDlg.h>

namespace korvane
{

class EditEvents final : public AppCommand<EditEvents, IEditEvents>, public Activity
{
public:
    static constexpr const wchar_t* dialogClass = L"KorvaneDlg.ctlEditEvents";
    static const GUID* classId() noexcept { return &__uuidof(::EditEvents); }
    static std::span<const Operand<EditEvents>> operands();

    EditEvents() noexcept : Activity(NameID) {}

    bool prepare();
    bool execute();

    // For the dialog.
    /// Chooses a resource, which becomes the primary one, or takes it out of the choice.
    void SetName(long nameId, bool checked);
    /// May the user book for resources other than his own?
    bool MayBookOthers() const;
    long ExceptionFlag() const noexcept { return exceptionFlag_; }

    STDMETHODIMP get_EventInstance(long* value) override { return read(value, Instance); }
    STDMETHODIMP put_EventInstance(long value) override { return write(Instance, value); }
    STDMETHODIMP get_GroupID(long* value) override { return read(value, GroupID); }
    STDMETHODIMP get_TypeID(long* value) override { return read(value, TypeID); }
    STDMETHODIMP put_TypeID(long value) override { return write(TypeID, value); }
    STDMETHODIMP get_NameID(long* value) override { return read(value, NameID); }
    STDMETHODIMP get_T0(DATE* value) override { return read(value, T0); }
    STDMETHODIMP put_T0(DATE value) override { return write(T0, value); }
    STDMETHODIMP get_T1(DATE* value) override { return read(value, T1); }
    STDMETHODIMP put_T1(DATE value) override { return write(T1, value); }
    STDMETHODIMP get_Text(BSTR* value) override { return read(value, Text); }
    STDMETHODIMP put_Text(BSTR value) override { return write(Text, value); }

    long NameID = 0;          ///< the primary resource
    ComPtr<IRecurrence> Rule; ///< the working copy that the dialog edits; empty for no repetition

private:
    void prepareNew();
    void prepareStored();
    void addActivity();
    void removeActivity();
    void changeActivity();
    void synchroniseNames();
    /// Writes the working rule, of the link group or of the one activity.
    void writeRule(bool linked) const;
    ComPtr<IRecurrence> copyOf(const ComPtr<IRecurrence>& rule) const;

    long exceptionFlag_ = 0;
    // What an attempt that failed half-way has left to complete.
    bool added_ = false;
    bool leavesGroup_ = false;
};

} // namespace korvane
