// The commands on how a document is stored: its line ends, its character set, and whether it is locked to be written.

#include "hosts/StoredForm.h"
#include "shell/Commands.h"
#include "shell/Program.h"

#include <algorithm>

namespace nib {

namespace {

using Context = const CommandContext;

/// It can be stored in another form: known, and written from here.
const StoredForm* ChosenForm(Context& c)
{
    return c.document && !c.document->ReadOnly() ? c.document->Stored() : nullptr;
}

template <TextCoding Coding>
bool CanCode(Context& c)
{
    const StoredForm* form = ChosenForm(c);
    if (!form) return false;
    const std::vector<TextCoding> codings = form->Codings();
    return std::find(codings.begin(), codings.end(), Coding) != codings.end();
}
template <TextCoding Coding>
bool IsCoded(Context& c)
{
    return c.document && c.document->Stored() && c.document->Stored()->Coding() == Coding;
}
template <TextCoding Coding>
void SetCoding(CommandContext& c)
{
    c.document->SetCoding(Coding);
}

/// That of the connection, or Latin-1 of a local file.
TextCoding OwnCoding(Context& c)
{
    return c.document->Stored()->Codings().back();
}
bool CanCodeOwn(Context& c)
{
    return ChosenForm(c) && OwnCoding(c) != TextCoding::Utf8;
}
bool IsCodedOwn(Context& c)
{
    if (!c.document || !c.document->Stored()) return false;
    return OwnCoding(c) != TextCoding::Utf8 && c.document->Stored()->Coding() == OwnCoding(c);
}
void SetOwnCoding(CommandContext& c)
{
    c.document->SetCoding(OwnCoding(c));
}

bool CanEnd(Context& c)
{
    const StoredForm* form = ChosenForm(c);
    return form && form->HasLineEnds();
}
template <LineEnd End>
bool Ends(Context& c)
{
    const StoredForm* form = c.document ? c.document->Stored() : nullptr;
    return form && form->HasLineEnds() && form->Ends() == End && !c.document->MixedEnds();
}
template <LineEnd End>
void SetEnds(CommandContext& c)
{
    c.document->SetEnds(End);
}

bool IsReadOnly(Context& c)
{
    return c.document && c.document->ReadOnly();
}
/// Changes would be left without their lock.
bool CanSetReadOnly(Context& c)
{
    return c.document && c.document->ItemObject() && !c.document->IsDirty() && !c.document->NewItem();
}
void SetReadOnly(CommandContext& c)
{
    c.document->SetReadOnly(c.checked.value_or(!IsReadOnly(c)));
}

constexpr CommandRow kRows[] = {
    {u"ReadOnly", SetReadOnly, CanSetReadOnly, IsReadOnly},
    {u"CodingUtf8", SetCoding<TextCoding::Utf8>, CanCode<TextCoding::Utf8>, IsCoded<TextCoding::Utf8>},
    {u"CodingUtf16Le", SetCoding<TextCoding::Utf16Le>, CanCode<TextCoding::Utf16Le>, IsCoded<TextCoding::Utf16Le>},
    {u"CodingUtf16Be", SetCoding<TextCoding::Utf16Be>, CanCode<TextCoding::Utf16Be>, IsCoded<TextCoding::Utf16Be>},
    {u"CodingOwn", SetOwnCoding, CanCodeOwn, IsCodedOwn},
    {u"EndsLf", SetEnds<LineEnd::Lf>, CanEnd, Ends<LineEnd::Lf>},
    {u"EndsCrLf", SetEnds<LineEnd::CrLf>, CanEnd, Ends<LineEnd::CrLf>},
    {u"EndsCr", SetEnds<LineEnd::Cr>, CanEnd, Ends<LineEnd::Cr>},
};

} // namespace

std::span<const CommandRow> StorageCommands()
{
    return kRows;
}

} // namespace nib
