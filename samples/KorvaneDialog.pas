// Not tried: no Delphi was at hand. A new activity in a form of the VCL. KorvaneDlg_TLB is what "Import Component > Import
// a Type Library" makes of the registered KorvaneDlg.dll: TctlEditEvents, a TOleControl, with the events OnDone, OnError,
// OnResize and OnSubmit (where TOleControl has an event of that name, the import gives another name to the new one).
// The form has no .dfm: make it by TActivityForm.CreateNew(Application).
unit KorvaneDialog;

interface

uses
  System.Classes, System.SysUtils, System.Win.ComObj, System.Variants, Vcl.Controls, Vcl.Forms, Vcl.Dialogs,
  KorvaneLib_TLB, KorvaneDlg_TLB;

type
  TActivityForm = class(TForm)
  private
    FDialog: TctlEditEvents;
    procedure DialogDone(Sender: TObject; Cancelled: WordBool);
    procedure DialogError(Sender: TObject; Number: Integer; const Source, Description: WideString);
    procedure DialogResize(Sender: TObject; Width, Height: Integer);
    procedure DialogSubmit(Sender: TObject; const Candidate: IAppCommand; var Executed: WordBool;
      var ErrorNumber: Integer; var ErrorSource, ErrorDescription: WideString);
  public
    procedure Edit(const Root: OleVariant);
  end;

implementation

procedure TActivityForm.Edit(const Root: OleVariant);
var
  Command, Dialog: OleVariant;
begin
  Command := CreateOleObject('KorvaneDlg.EditEvents');
  Command.Operation := 1;
  Command.Operand['Root'] := Root;
  Command.Operand['GroupID'] := 2;
  Command.Operand['N0'] := 2;
  Command.Operand['T0'] := VarFromDateTime(Date + 9 / 24);
  Command.Operand['T1'] := VarFromDateTime(Date + 10 / 24);
  Command.Prepare;

  FDialog := TctlEditEvents.Create(Self);
  FDialog.Parent := Self;
  FDialog.OnDone := DialogDone;
  FDialog.OnError := DialogError;
  FDialog.OnResize := DialogResize;
  FDialog.OnSubmit := DialogSubmit;
  Dialog := FDialog.OleObject; // a component has a Name of its own
  Dialog.Command := IDispatch(Command);
  Caption := Dialog.Name;
  if not Dialog.Ready then
    Exit;
  ClientWidth := FDialog.Width; // as the dialog has asked for
  ClientHeight := FDialog.Height;
  ShowModal;
end;

procedure TActivityForm.DialogDone(Sender: TObject; Cancelled: WordBool);
begin
  ModalResult := mrOk; // closes the form once the event has returned
end;

procedure TActivityForm.DialogError(Sender: TObject; Number: Integer; const Source, Description: WideString);
begin
  MessageDlg(Description, mtWarning, [mbOK], 0);
end;

procedure TActivityForm.DialogResize(Sender: TObject; Width, Height: Integer);
begin
  FDialog.SetBounds(0, 0, Width, Height);
  ClientWidth := Width;
  ClientHeight := Height;
end;

procedure TActivityForm.DialogSubmit(Sender: TObject; const Candidate: IAppCommand; var Executed: WordBool;
  var ErrorNumber: Integer; var ErrorSource, ErrorDescription: WideString);
begin
  try
    Candidate.Execute;
    Executed := True;
  except
    on E: EOleSysError do // the dialog stays open and raises Error
    begin
      ErrorNumber := E.ErrorCode;
      if E is EOleException then
        ErrorSource := EOleException(E).Source;
      ErrorDescription := E.Message;
    end;
  end;
end;

end.
