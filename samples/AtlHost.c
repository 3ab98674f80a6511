/* A new activity in AtlAxWin, the platform's own container. The program hears the dialog's four events, hands it the
   keyboard and gives it the size that it asks for. How to build and start it: README.md beside this file. */
#define COBJMACROS
#include <windows.h>
#include "KorvaneDlg.h"
#include "KorvaneStore.h"
#include <stdio.h>
#include <stdlib.h>

/* The container's functions: not every compiler has a library to link them from. */
#define ATL(name, type, list) ((type(WINAPI*) list)(void*)GetProcAddress(LoadLibraryW(L"atl.dll"), #name))
#define AtlAxWinInit ATL(AtlAxWinInit, BOOL, (void))
#define AtlAxGetControl ATL(AtlAxGetControl, HRESULT, (HWND, IUnknown**))
#define AtlAdvise ATL(AtlAdvise, HRESULT, (IUnknown*, IUnknown*, REFIID, DWORD*))

static HWND frame;

static void fit(LONG width, LONG height)
{
    RECT all = {0, 0, width, height};
    AdjustWindowRect(&all, WS_OVERLAPPEDWINDOW, FALSE);
    SetWindowPos(frame, NULL, 0, 0, all.right - all.left, all.bottom - all.top, SWP_NOMOVE | SWP_NOZORDER);
}

static void check(HRESULT result, const char* step)
{
    if (FAILED(result))
        printf("%s: 0x%08lX\n", step, result), exit(EXIT_FAILURE);
}

static void* as(void* object, REFIID iid)
{
    void* face;
    check(IUnknown_QueryInterface((IUnknown*)object, iid, &face), "interface");
    return face;
}

static void* create(const wchar_t* progId, REFIID iid)
{
    void* object;
    CLSID id;
    check(CLSIDFromProgID(progId, &id), "class");
    check(CoCreateInstance(&id, NULL, CLSCTX_INPROC_SERVER, iid, &object), "object");
    return object;
}

/* An error is passed on as Execute leaves it: the dialog stays open and raises Error. */
static HRESULT submit(IDispatch* candidate, VARIANT_BOOL* executed)
{
    VARIANT_BOOL ignored;
    IAppCommand* command = as(candidate, &IID_IAppCommand);
    HRESULT outcome = IAppCommand_Execute(command, &ignored);
    IAppCommand_Release(command);
    *executed = SUCCEEDED(outcome) ? VARIANT_TRUE : VARIANT_FALSE;
    printf("Submit: %s\n", *executed ? "executed" : "failed");
    return outcome;
}

/* The listener lives as long as the program: nobody counts its references. */
static HRESULT STDMETHODCALLTYPE query(IDispatch* self, REFIID iid, void** object)
{
    BOOL known = IsEqualIID(iid, &IID_IUnknown) || IsEqualIID(iid, &IID_IDispatch) ||
                 IsEqualIID(iid, &DIID_IDialogEvents);
    *object = known ? self : NULL;
    return known ? S_OK : E_NOINTERFACE;
}

static ULONG STDMETHODCALLTYPE count(IDispatch* self)
{
    return self != NULL;
}

static HRESULT STDMETHODCALLTYPE hear(IDispatch* self, DISPID event, REFIID iid, LCID locale, WORD flags,
                                      DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* exception,
                                      UINT* bad)
{
    VARIANT* last = parameters->rgvarg; /* the arguments come last first */
    HRESULT outcome = S_OK;
    (void)self, (void)iid, (void)locale, (void)flags, (void)result, (void)exception, (void)bad;
    if (event == 1)
        printf("Done: %s\n", V_BOOL(&last[0]) ? "cancelled" : "OK"), PostQuitMessage(0);
    else if (event == 2)
        printf("Error: 0x%08lX, %ls, %ls\n", V_I4(&last[2]), V_BSTR(&last[1]), V_BSTR(&last[0]));
    else if (event == 3)
        printf("Resize: %ld x %ld\n", V_I4(&last[1]), V_I4(&last[0])), fit(V_I4(&last[1]), V_I4(&last[0]));
    else if (event == 4)
        outcome = submit(V_DISPATCH(&last[4]), V_BOOLREF(&last[3]));
    fflush(stdout);
    return outcome;
}

static IDispatchVtbl members = {query, count, count, NULL, NULL, NULL, hear};
static IDispatch listener = {&members};

/* A command that books the first person of the sample, today from 9 to 10. */
static IEditEvents* booking(IRoot* root)
{
    IEditEvents* command = create(L"KorvaneDlg.EditEvents", &IID_IEditEvents);
    VARIANT value;
    VARIANT_BOOL ignored;
    SYSTEMTIME now;
    DATE today;
    GetLocalTime(&now);
    SystemTimeToVariantTime(&now, &today);
    IEditEvents_put_Operation(command, 1); /* add */
    V_VT(&value) = VT_DISPATCH, V_DISPATCH(&value) = (IDispatch*)root;
    IEditEvents_put_Operand(command, SysAllocString(L"Root"), value);
    V_VT(&value) = VT_I4, V_I4(&value) = 2;
    IEditEvents_put_Operand(command, SysAllocString(L"N0"), value);
    IEditEvents_put_T0(command, (long)today + 9 / 24.0);
    IEditEvents_put_T1(command, (long)today + 10 / 24.0);
    check(IEditEvents_Prepare(command, &ignored), "Prepare");
    return command;
}

/* An argument names an account: "employee" may book nobody but himself, and hears of an error on OK. */
int wmain(int number, wchar_t** arguments)
{
    BSTR text = SysAllocString(L"sample.sqlite"), account = SysAllocString(number > 1 ? arguments[1] : L"");
    IRoot* root;
    IUnknown* control;
    VARIANT_BOOL ready;
    DWORD cookie;
    SIZEL size;
    MSG message;

    check(OleInitialize(NULL), "OLE");
    IDatabase* database = create(L"KorvaneData.Database", &IID_IDatabase);
    check(IDatabase_Open(database, text, account, &root), "database");
    IDatabase_AddSample(database, root); /* refused where it is there already */
    IEditEvents* command = booking(root);

    /* A window of the container's class, whose text names the control: the dialog of the command. */
    AtlAxWinInit();
    check(IEditEvents_get_DialogClass(command, &text), "DialogClass");
    frame = CreateWindowExW(WS_EX_CONTROLPARENT, L"AtlAxWin", text, WS_OVERLAPPEDWINDOW, 40, 40, 400, 400,
                            NULL, NULL, NULL, NULL);
    check(AtlAxGetControl(frame, &control), "control");
    check(AtlAdvise(control, (IUnknown*)&listener, &DIID_IDialogEvents, &cookie), "events");

    IDialogControl* dialog = as(control, &IID_IDialogControl);
    check(IDialogControl_putref_Command(dialog, (IDispatch*)command), "Command");
    check(IDialogControl_get_Name(dialog, &text), "Name");
    check(IDialogControl_get_Ready(dialog, &ready), "Ready");
    IOleObject_GetExtent((IOleObject*)as(control, &IID_IOleObject), DVASPECT_CONTENT, &size);
    fit(MulDiv(size.cx, 96, 2540), MulDiv(size.cy, 96, 2540)); /* this program does not know finer screens */
    SetWindowTextW(frame, text);
    ShowWindow(frame, SW_SHOW);
    SetFocus(GetWindow(frame, GW_CHILD));

    /* The container does not tell who is active: the control itself is asked for its keys. */
    IOleInPlaceActiveObject* keyboard = as(control, &IID_IOleInPlaceActiveObject);
    while (IsWindow(frame) && GetMessageW(&message, NULL, 0, 0) > 0)
        if (IOleInPlaceActiveObject_TranslateAccelerator(keyboard, &message) != S_OK)
            TranslateMessage(&message), DispatchMessageW(&message);
    return 0; /* the process takes the rest along */
}
