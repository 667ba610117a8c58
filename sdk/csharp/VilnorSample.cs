// A host of Vilnor in one file. It needs Vilnor.cs, which is beside it.
//   VilnorSample CONNECTION DBTYPE FOLDER PID BID RID FHPID
// README.md explains the arguments and how to build it. It keeps to C# 5, which the compiler that is
// part of Windows knows.
using System;
using System.Collections.Generic;
using System.IO;
using System.Linq;
using System.Runtime.InteropServices;
using System.Runtime.InteropServices.ComTypes;
using System.Text;
using System.Text.RegularExpressions;
using Vilnor;

internal static class VilnorSample
{
    // Vilnor Link answers a new case with this message, to a hidden window that Vilnor makes.
    private const int NewCaseAnswer = 10002;
    private const string VilnorWindow = "KestraToVilnor";

    private const int Done = 0, Usage = 1, Not32Bit = 2, NoComponent = 3, NoDatabase = 4, CallFailed = 5;

    // Vilnor lives in a single-threaded apartment: the answers arrive as window messages.
    [STAThread]
    private static int Main(string[] words)
    {
        if (words.Length != 7)
        {
            return Fail(Usage, "usage: VilnorSample CONNECTION DBTYPE FOLDER PID BID RID FHPID");
        }
        if (IntPtr.Size != 4)
        {
            return Fail(Not32Bit, "Vilnor.dll is 32-bit, and a 64-bit process cannot load it; " +
                "build this program with -platform:x86");
        }
        _BVilnor vilnor;
        try
        {
            vilnor = (_BVilnor)new BVilnor();
        }
        catch (COMException error)
        {
            return Fail(NoComponent, "Vilnor.dll is not registered on this computer; an " +
                "administrator installs Vilnor-1.5.N.msi: " + error.Message);
        }
        try
        {
            return Play(vilnor, words);
        }
        catch (COMException error)
        {
            return Fail(CallFailed, "a call failed: " + error.Message);
        }
        finally
        {
            // Now, and on this thread; the garbage collector would do it later, on its own thread.
            Marshal.ReleaseComObject(vilnor);
            Console.WriteLine("Vilnor is released.");
        }
    }

    private static int Fail(int code, string line)
    {
        // A driver's text may have several lines.
        Console.Error.WriteLine("VilnorSample: " + Regex.Replace(line, @"\s+", " "));
        return code;
    }

    private static int Play(_BVilnor vilnor, string[] words)
    {
        var sink = new JournalSink();
        var point = ConnectionPointOf(vilnor);
        int cookie;
        point.Advise(sink, out cookie);
        try
        {
            return PlayConnected(vilnor, words);
        }
        finally
        {
            point.Unadvise(cookie);
            Marshal.ReleaseComObject(point);
        }
    }

    private static int PlayConnected(_BVilnor vilnor, string[] words)
    {
        string connectionParameter = words[0];
        short kestraLangID = 1;
        short dbType = short.Parse(words[1]);
        vilnor.InitVilnor(ref connectionParameter, ref kestraLangID, ref dbType);
        Console.WriteLine("Vilnor is ready.");
        string databaseError = TryDatabase();
        if (databaseError != null)
        {
            return Fail(NoDatabase, "the database cannot be opened; check the connection string: " +
                databaseError);
        }
        new WaitingResults(vilnor, words[2]).ReadAll();
        AskWhetherItFits(vilnor, int.Parse(words[6]));
        int pid = int.Parse(words[3]);
        int bid = int.Parse(words[4]);
        int rid = int.Parse(words[5]);
        vilnor.OpenWithNewCase(ref pid, ref bid, ref rid);
        Console.WriteLine("A new case for patient " + pid + ": waiting for Vilnor Link's answer " +
            "(Ctrl+C ends this sample).");
        RunUntilAnswered(pid);
        Console.WriteLine("The answer has been read: a host shows its journal again.");
        return Done;
    }

    private static IConnectionPoint ConnectionPointOf(_BVilnor vilnor)
    {
        Guid events = typeof(__BVilnor).GUID;
        IConnectionPoint point;
        ((IConnectionPointContainer)vilnor).FindConnectionPoint(ref events, out point);
        return point;
    }

    // Vilnor reports a failing database in message boxes. Only a DBVilnor returns the error, when it
    // is created; so a host that creates one first can tell the user in its own words. It must
    // release it, because it keeps the database open.
    private static string TryDatabase()
    {
        try
        {
            var database = (_DBVilnor)new DBVilnor();
            Marshal.ReleaseComObject(database);
            return null;
        }
        catch (COMException error)
        {
            return error.Message;
        }
    }

    // Asks whether Vilnor Link can take everything that is planned in an application.
    private static void AskWhetherItFits(_BVilnor vilnor, int fhpId)
    {
        short errCode = 0;
        string errMsg = "";
        bool fits = vilnor.OKToSend(ref fhpId, ref errCode, ref errMsg);
        Console.WriteLine("OKToSend " + fhpId + (fits ? ": yes" : ": no, " + errCode + " " + errMsg));
    }

    // A host with forms has such a loop already (Application.Run) and needs nothing more. This
    // program ends when the answer has been read; it also ends with Ctrl+C, because the user may
    // never answer.
    private static void RunUntilAnswered(int pid)
    {
        Message message;
        while (GetMessage(out message, IntPtr.Zero, 0, 0) > 0)
        {
            var window = new StringBuilder(32);
            GetClassName(message.Window, window, window.Capacity);
            TranslateMessage(ref message);
            DispatchMessage(ref message);  // in here Vilnor reads the result and changes the database
            if (message.Number == NewCaseAnswer && message.WParam.ToInt32() == pid &&
                window.ToString() == VilnorWindow)
            {
                return;
            }
        }
    }

    [StructLayout(LayoutKind.Sequential)]
    private struct Message
    {
        public IntPtr Window;
        public uint Number;
        public IntPtr WParam;
        public IntPtr LParam;
        public uint Time;
        public int X;
        public int Y;
    }

    [DllImport("user32.dll", EntryPoint = "GetMessageW")]
    private static extern int GetMessage(out Message message, IntPtr window, uint first, uint last);

    [DllImport("user32.dll")]
    private static extern bool TranslateMessage(ref Message message);

    [DllImport("user32.dll", EntryPoint = "DispatchMessageW")]
    private static extern IntPtr DispatchMessage(ref Message message);

    [DllImport("user32.dll", EntryPoint = "GetClassNameW", CharSet = CharSet.Unicode)]
    private static extern int GetClassName(IntPtr window, StringBuilder name, int size);
}

// Receives the events. Vilnor raises them on this thread, before the call that causes them returns.
[ComVisible(true), ClassInterface(ClassInterfaceType.None)]
public sealed class JournalSink : __BVilnor
{
    public void CloseVilnor()
    {
    }

    public void UpdateJournal()
    {
        Console.WriteLine("Event UpdateJournal: a host shows its journal again.");
    }
}

// Results that nobody read, for example because the host was closed before the answer came.
// "OutNewCase4711.xml" is the name that Vilnor reads. It sets a result aside under a name like
// "OutNewCase4711 2026-11-16 14.05.00.xml".
internal sealed class WaitingResults
{
    private static readonly Regex ResultName =
        new Regex(@"^Out(NewFHP|NewCase|ExistCase)(0|-?[1-9][0-9]{0,9})( .*)?\.xml$");

    private readonly _BVilnor vilnor;
    private readonly string folder;
    private readonly HashSet<string> stuck = new HashSet<string>();

    public WaitingResults(_BVilnor vilnor, string folder)
    {
        this.vilnor = vilnor;
        this.folder = folder;
    }

    // Reads them, the oldest first. Deletes and overwrites nothing, so it may be interrupted at any
    // moment. Call it at the start and when the database is back, while no request is open.
    public void ReadAll()
    {
        for (string name = Oldest(); name != null; name = Oldest())
        {
            string own = OwnNameOf(name);
            int before = Count(own);
            if (GiveOwnName(name, own))
            {
                Read(own);
            }
            bool stays = Count(own) >= before;
            if (stays)
            {
                // Those with the same key that are newer must not be read before it.
                stuck.Add(own);
            }
            Console.WriteLine(name + (stays ? " stays: a person must look at it" : " is dealt with"));
        }
    }

    private static string OwnNameOf(string name)
    {
        Match parts = ResultName.Match(name);
        return "Out" + parts.Groups[1].Value + parts.Groups[2].Value + ".xml";
    }

    private IEnumerable<FileInfo> Results()
    {
        var directory = new DirectoryInfo(folder);
        if (!directory.Exists)
        {
            return new FileInfo[0];  // before the first request there is no such folder
        }
        int key;
        return directory.GetFiles("Out*.xml").Where(file => ResultName.IsMatch(file.Name) &&
            int.TryParse(ResultName.Match(file.Name).Groups[2].Value, out key));
    }

    // Null if none is left. Of two results with the same time, the one that was set aside is older.
    private string Oldest()
    {
        return Results().Where(file => !stuck.Contains(OwnNameOf(file.Name)))
            .OrderBy(file => file.LastWriteTimeUtc)
            .ThenBy(file => file.Name == OwnNameOf(file.Name))
            .Select(file => file.Name).FirstOrDefault();
    }

    private int Count(string own)
    {
        return Results().Count(file => OwnNameOf(file.Name) == own);
    }

    // A newer result of that name is renamed for the time being. False if a file cannot be renamed.
    private bool GiveOwnName(string name, string own)
    {
        string ownPath = Path.Combine(folder, own);
        if (name == own)
        {
            return true;
        }
        try
        {
            for (int number = 1; File.Exists(ownPath); ++number)
            {
                string aside = Path.ChangeExtension(ownPath, null) + " waiting " + number + ".xml";
                if (!File.Exists(aside))
                {
                    File.Move(ownPath, aside);
                }
            }
            File.Move(Path.Combine(folder, name), ownPath);
            return true;
        }
        catch (IOException)
        {
            return false;
        }
        catch (UnauthorizedAccessException)
        {
            return false;
        }
    }

    private void Read(string own)
    {
        Match parts = ResultName.Match(own);
        int key = int.Parse(parts.Groups[2].Value);
        switch (parts.Groups[1].Value)
        {
            case "NewFHP":
                vilnor.ReadNewFHP(ref key);
                break;
            case "NewCase":
                vilnor.ReadNewCase(ref key);
                break;
            default:
                vilnor.ReadExistCase(ref key);
                break;
        }
    }
}
