/* A new activity in the platform's own container, AtlAxWin. The program hears the dialog's four events, hands it the
   keyboard and gives it the size that it asks for. How to build and start it: README.md beside this file. */
#define COBJMACROS
#include <windows.h>
#include "KorvaneDlg.h"
#include "KorvaneStore.h"
#include <stdio.h>
#include <stdlib.h>

static HWND frame, holder;

static void fit(LONG width, LONG height)
{
    RECT all = {0, 0, width, height};
    AdjustWindowRectEx(&all, WS_OVERLAPPEDWINDOW, FALSE, 0);
    SetWindowPos(frame, NULL, 0, 0, all.right - all.left, all.bottom - all.top, SWP_NOMOVE | SWP_NOZORDER);
    MoveWindow(holder, 0, 0, width, height, TRUE);
}

/* Executes a command. What fails is raised out of the handler: the dialog stays open and raises Error. */
static HRESULT submit(IDispatch* candidate, VARIANT_BOOL* executed, EXCEPINFO* exception)
{
    VARIANT_BOOL ignored;
    IErrorInfo* information = NULL;
    IAppCommand* command = NULL;
    HRESULT outcome = IDispatch_QueryInterface(candidate, &IID_IAppCommand, (void**)&command);
    if (SUCCEEDED(outcome))
        outcome = IAppCommand_Execute(command, &ignored), IAppCommand_Release(command);
    *executed = SUCCEEDED(outcome) ? VARIANT_TRUE : VARIANT_FALSE;
    printf("Submit: %s\n", *executed ? "executed" : "failed");
    if (SUCCEEDED(outcome))
        return S_OK;
    exception->scode = outcome;
    if (GetErrorInfo(0, &information) == S_OK)
    {
        IErrorInfo_GetSource(information, &exception->bstrSource);
        IErrorInfo_GetDescription(information, &exception->bstrDescription);
        IErrorInfo_Release(information);
    }
    return DISP_E_EXCEPTION;
}

/* The sink of the events lives as long as the program: nobody counts its references. */
static HRESULT STDMETHODCALLTYPE query(IDispatch* self, REFIID iid, void** object)
{
    BOOL known = IsEqualIID(iid, &IID_IUnknown) || IsEqualIID(iid, &IID_IDispatch) ||
                 IsEqualIID(iid, &DIID_IDialogEvents);
    *object = known ? self : NULL;
    return known ? S_OK : E_NOINTERFACE;
}
static ULONG STDMETHODCALLTYPE counted(IDispatch* self)
{
    return self != NULL;
}
static HRESULT STDMETHODCALLTYPE heard(IDispatch* self, DISPID event, REFIID iid, LCID locale, WORD flags,
                                       DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* exception,
                                       UINT* bad)
{
    VARIANT* last = parameters->rgvarg; /* the arguments come last first */
    HRESULT outcome = S_OK;
    (void)self, (void)iid, (void)locale, (void)flags, (void)result, (void)bad;
    if (event == 1)
        printf("Done: %s\n", V_BOOL(&last[0]) ? "cancelled" : "OK"), PostQuitMessage(0);
    else if (event == 2)
        printf("Error: 0x%08lX, %ls, %ls\n", V_I4(&last[2]), V_BSTR(&last[1]), V_BSTR(&last[0]));
    else if (event == 3)
        printf("Resize: %ld x %ld\n", V_I4(&last[1]), V_I4(&last[0])), fit(V_I4(&last[1]), V_I4(&last[0]));
    else if (event == 4)
        outcome = submit(V_DISPATCH(&last[4]), V_BOOLREF(&last[3]), exception);
    fflush(stdout);
    return outcome;
}
static IDispatchVtbl members = {query, counted, counted, NULL, NULL, NULL, heard};
static IDispatch sink = {&members};

static void check(HRESULT result, const char* step)
{
    if (SUCCEEDED(result))
        return;
    printf("%s: 0x%08lX\n", step, result);
    exit(EXIT_FAILURE);
}

static void* create(const wchar_t* progId, REFIID iid)
{
    void* object = NULL;
    CLSID id;
    check(CLSIDFromProgID(progId, &id), "class");
    check(CoCreateInstance(&id, NULL, CLSCTX_INPROC_SERVER, iid, &object), "object");
    return object;
}

static void operand(IAppCommand* command, const wchar_t* name, VARIANT value)
{
    BSTR text = SysAllocString(name);
    check(IAppCommand_put_Operand(command, text, value), "operand");
    SysFreeString(text);
}

/* A command that books the first resource of the sample, today from 9 to 10. */
static IAppCommand* prepared(IRoot* root)
{
    IAppCommand* command = create(L"KorvaneDlg.EditEvents", &IID_IAppCommand);
    VARIANT value;
    VARIANT_BOOL ignored;
    SYSTEMTIME now;
    DATE today;
    IAppCommand_put_Operation(command, 1); /* add */
    V_VT(&value) = VT_DISPATCH, V_DISPATCH(&value) = (IDispatch*)root;
    operand(command, L"Root", value);
    V_VT(&value) = VT_I4, V_I4(&value) = 2;
    operand(command, L"GroupID", value);
    operand(command, L"N0", value);
    GetLocalTime(&now);
    SystemTimeToVariantTime(&now, &today);
    V_VT(&value) = VT_DATE, V_DATE(&value) = (long)today + 9 / 24.0;
    operand(command, L"T0", value);
    V_DATE(&value) += 1 / 24.0;
    operand(command, L"T1", value);
    check(IAppCommand_Prepare(command, &ignored), "Prepare");
    return command;
}

/* The first argument may name an account: "employee" may look, and hears of an error on OK. */
int wmain(int count, wchar_t **arguments)
{
    HMODULE atl = LoadLibraryW(L"atl.dll");
    BOOL(WINAPI * initialize)(void) = (BOOL(WINAPI*)(void))(void*)GetProcAddress(atl, "AtlAxWinInit");
    HRESULT(WINAPI * controlOf)
    (HWND, IUnknown**) = (HRESULT(WINAPI*)(HWND, IUnknown**))(void*)GetProcAddress(atl, "AtlAxGetControl");
    IDatabase* database;
    IRoot* root;
    IAppCommand* command;
    IUnknown* control;
    IDialogControl* dialog;
    IOleObject* object;
    IOleInPlaceActiveObject* keyboard;
    IConnectionPointContainer* container;
    IConnectionPoint* events;
    BSTR text = SysAllocString(L"sample.sqlite");
    VARIANT_BOOL ready;
    DWORD cookie;
    SIZEL size;
    long window;
    MSG message;

    check(OleInitialize(NULL), "OLE");
    database = create(L"KorvaneData.Database", &IID_IDatabase);
    check(IDatabase_Open(database, text, count > 1 ? SysAllocString(arguments[1]) : NULL, &root), "database");
    IDatabase_AddSample(database, root); /* refused where it is there already */
    command = prepared(root);

    /* the dialog that the command names, in a window of the container's class */
    check(initialize() ? S_OK : E_FAIL, "AtlAxWin");
    check(IAppCommand_get_DialogClass(command, &text), "DialogClass");
    frame = CreateWindowExW(WS_EX_CONTROLPARENT, L"Static", NULL, WS_OVERLAPPEDWINDOW, 40, 40, 400, 400, NULL,
                            NULL, NULL, NULL);
    holder = CreateWindowExW(WS_EX_CONTROLPARENT, L"AtlAxWin", text, WS_CHILD | WS_VISIBLE, 0, 0, 400, 400,
                             frame, NULL, NULL, NULL);
    check(controlOf(holder, &control), "control");
    check(IUnknown_QueryInterface(control, &IID_IDialogControl, (void**)&dialog), "dialog");
    IUnknown_QueryInterface(control, &IID_IOleObject, (void**)&object);
    IUnknown_QueryInterface(control, &IID_IOleInPlaceActiveObject, (void**)&keyboard);
    IUnknown_QueryInterface(control, &IID_IConnectionPointContainer, (void**)&container);
    check(IConnectionPointContainer_FindConnectionPoint(container, &DIID_IDialogEvents, &events), "events");
    check(IConnectionPoint_Advise(events, (IUnknown*)&sink, &cookie), "events");

    check(IDialogControl_putref_Command(dialog, (IDispatch*)command), "Command");
    check(IDialogControl_get_Name(dialog, &text), "Name");
    SetWindowTextW(frame, text);
    check(IDialogControl_get_Ready(dialog, &ready), "Ready");
    IOleObject_GetExtent(object, DVASPECT_CONTENT, &size);
    fit(MulDiv(size.cx, 96, 2540), MulDiv(size.cy, 96, 2540)); /* this program does not know finer screens */
    ShowWindow(frame, SW_SHOW);
    IDialogControl_get_hWnd(dialog, &window);
    SetFocus((HWND)(LONG_PTR)window);

    /* the control itself is asked for its keys */
    while (GetMessageW(&message, NULL, 0, 0) > 0)
        if (!IsWindow(frame) || IOleInPlaceActiveObject_TranslateAccelerator(keyboard, &message) != S_OK)
        {
            TranslateMessage(&message);
            DispatchMessageW(&message);
            if (!IsWindow(frame))
                PostQuitMessage(0);
        }
    IConnectionPoint_Unadvise(events, cookie);
    IDialogControl_putref_Command(dialog, NULL);
    DestroyWindow(frame);
    return 0; /* the process takes the rest along */
}
