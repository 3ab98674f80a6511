// The command that leaves a phone message for a resource, or stores its information rows.
#pragma once

#include "messages/MessageCommand.h"

#include <vector>

namespace korvane
{

class InfoMessage final : public MessageCommand<InfoMessage, IInfoMessage>
{
public:
    enum Operation : long
    {
        operationSend = 1,
        operationStore = 3
    };

    static constexpr const wchar_t* dialogClass = L"KorvaneDlg.ctlInfoMessage";
    static const GUID* classId() noexcept { return &__uuidof(::InfoMessage); }
    static std::span<const Operand<InfoMessage>> operands();

    bool prepare();
    bool execute();

    /// For the dialog: reads the resource's rows into Info, and returns it. A resource without rows gets the labels of
    /// the info file, or Empty.
    Variant FetchInfo();

    STDMETHODIMP get_TypeIndex(long* value) override { return read(value, TypeIndex); }
    STDMETHODIMP put_TypeIndex(long value) override { return write(TypeIndex, value); }
    STDMETHODIMP get_Info(VARIANT* value) override { return read(value, Info); }
    STDMETHODIMP put_Info(VARIANT value) override;

    Bstr Name;          ///< the resource's name, for the dialog
    long TypeIndex = 0; ///< the kind of the message, counted from 0
    Variant Info; ///< rows to store: an array of texts, labels at (0, row), values at (1, row); or Empty

private:
    struct Row
    {
        Bstr label;
        Bstr value;
    };

    /// The rows of a resource, in the order in which they came.
    struct Rows
    {
        std::vector<Row> rows;
        std::size_t count = 0;

        void clear();
        void add(Bstr label, Bstr value);
    };

    int listen();
    long kind() const noexcept;
    void send(const ComPtr<IMessages>& messages) const;
    void store(const ComPtr<INames>& names);

    Rows stored_; ///< as far as known, what the data layer holds: storing removes it first
    Rows read_;   ///< what the last subscription has heard so far
    static constexpr int none = 0;
    int reading_ = none; ///< the reading that it belongs to; none when that has come to its end
    int readings_ = 0;   ///< how many there were
    Subscription<INames> mNames;
};

} // namespace korvane
