// Not tried: no .NET Framework was at hand. A new activity in Windows Forms: .NET's own container hosts the control, and
// the events come through a connection point. Both DLLs must be registered (see README.md).
//
// Build (x86 as the registered library is):
//   tlbimp x86\KorvaneLib.tlb /out:KorvaneLib.dll
//   tlbimp x86\KorvaneData.tlb /out:KorvaneData.dll
//   tlbimp x86\KorvaneInterfaces.tlb /out:KorvaneInterfaces.dll /reference:KorvaneLib.dll
//   tlbimp x86\KorvaneDlg.tlb /out:KorvaneDlg.dll /reference:KorvaneLib.dll /reference:KorvaneInterfaces.dll
//          /reference:KorvaneData.dll
//   csc /platform:x86 /target:winexe samples\AxHost.cs /reference:KorvaneLib.dll /reference:KorvaneDlg.dll
using System;
using System.Drawing;
using System.Runtime.InteropServices;
using System.Windows.Forms;

public class DialogHost : AxHost
{
    AxHost.ConnectionPointCookie events;
    public readonly Form Frame;

    public DialogHost(Type control, Form frame) : base(control.GUID.ToString())
    {
        Frame = frame;
    }

    protected override void CreateSink()
    {
        events = new AxHost.ConnectionPointCookie(GetOcx(), new Sink(this), typeof(KorvaneDlg.IDialogEvents));
    }

    protected override void DetachSink()
    {
        if (events != null)
            events.Disconnect();
    }

    // Public, like the class around it, and visible to COM, or no event arrives.
    [ComVisible(true), ClassInterface(ClassInterfaceType.None)]
    public class Sink : KorvaneDlg.IDialogEvents
    {
        readonly DialogHost host;
        public Sink(DialogHost host) { this.host = host; }

        public void Done(bool cancelled) { host.Frame.BeginInvoke(new Action(host.Frame.Close)); }

        public void Error(int number, string source, string description)
        {
            MessageBox.Show(host.Frame, description, source, MessageBoxButtons.OK, MessageBoxIcon.Warning);
        }

        public void Resize(int width, int height) { host.Frame.ClientSize = host.Size = new Size(width, height); }

        public void Submit(KorvaneLib.IAppCommand candidate, ref bool executed, ref int errorNumber, ref string errorSource,
                           ref string errorDescription)
        {
            try
            {
                candidate.Execute();
                executed = true;
            }
            catch (Exception error) // some numbers have a class of their own; the dialog stays open and raises Error
            {
                errorNumber = Marshal.GetHRForException(error);
                errorSource = error.Source;
                errorDescription = error.Message;
            }
        }
    }
}

static class Program
{
    [STAThread]
    static void Main()
    {
        dynamic database = Activator.CreateInstance(Type.GetTypeFromProgID("KorvaneData.Database"));
        dynamic root = database.Open("sample.sqlite", "");
        try { database.AddSample(root); } catch (COMException) { } // refused where it is there already

        dynamic command = Activator.CreateInstance(Type.GetTypeFromProgID("KorvaneDlg.EditEvents"));
        command.Operation = 1;
        command.Operand["Root"] = root;
        command.Operand["GroupID"] = 2;
        command.Operand["N0"] = 2;
        command.Operand["T0"] = DateTime.Today.AddHours(9);
        command.Operand["T1"] = DateTime.Today.AddHours(10);
        command.Prepare();

        var frame = new Form { FormBorderStyle = FormBorderStyle.FixedDialog, MaximizeBox = false };
        var host = new DialogHost(Type.GetTypeFromProgID((string)command.DialogClass), frame);
        host.BeginInit();
        frame.Controls.Add(host);
        host.EndInit(); // creates the control, also while nothing is visible
        dynamic dialog = host.GetOcx();
        dialog.Command = command;
        frame.Text = dialog.Name;
        if (!dialog.Ready)
            return;
        frame.ClientSize = host.Size; // as the dialog has asked for
        Application.Run(frame);
    }
}
