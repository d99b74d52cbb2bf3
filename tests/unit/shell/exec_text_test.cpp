// From what is to be opened to a command line; pure.
#include <doctest.h>

#include <map>
#include <set>
#include <vector>

#include "shell/ExecText.h"

using namespace ExecText;

namespace {

// A registry, an environment and a disk of its own.
struct Machine : Surroundings {
    std::map<std::string, std::string> classes, variables;
    std::set<std::string> files;
    std::vector<std::string> notes;
    int asked = 0;  // for variables

    std::string ClassText(const std::string& key) override { return Of(classes, key); }
    std::string Variable(const std::string& name) override {
        ++asked;
        return Of(variables, name);
    }
    bool FileExists(const std::string& path) override { return files.contains(path); }
    void Note(const std::string& text) override { notes.push_back(text); }

    void Mail(const std::string& handler) { classes["mailto\\shell\\open\\command"] = handler; }
    void Browser(const std::string& handler) {
        classes[".htm"] = "htmlfile";
        classes["htmlfile\\shell\\open\\command"] = handler;
    }
    std::string Direct(const std::string& command) {
        const CommandLine line = Build(command, *this);
        CHECK(line.direct);
        return line.text;
    }
    std::string Start(const std::string& command, Shell shell = Shell::Start) {
        const CommandLine line = Build(command, *this, shell);
        CHECK_FALSE(line.direct);
        return line.text;
    }

  private:
    static std::string Of(const std::map<std::string, std::string>& texts, const std::string& key) {
        const auto found = texts.find(key);
        return found == texts.end() ? std::string() : found->second;
    }
};

}  // namespace

// --- documents

TEST_CASE_FIXTURE(Machine, "a document path without blanks is started as it is") {
    CHECK(Start("C:\\Letters\\a.txt") == "start C:\\Letters\\a.txt");
}

TEST_CASE_FIXTURE(Machine, "a document path with a blank and no web marker is wrapped in double quotes and started") {
    CHECK(Start("C:\\My Letters\\a.txt") == "start \"C:\\My Letters\\a.txt\"");
    CHECK(notes.empty());
}

TEST_CASE_FIXTURE(Machine, "a command that begins with a double quote is not wrapped once more") {
    CHECK(Start("\"C:\\My Letters\\a.txt\"") == "start \"C:\\My Letters\\a.txt\"");
    CHECK(Start("\"C:\\My Programs\\a.exe\" /x b") == "start \"C:\\My Programs\\a.exe\" /x b");
}

TEST_CASE_FIXTURE(Machine, "a folder keeps its backslash before the closing double quote") {
    CHECK(Start("C:\\My Manual\\English\\") == "start \"C:\\My Manual\\English\\\"");
}

TEST_CASE_FIXTURE(Machine, "umlauts pass unchanged") {
    CHECK(Start("C:\\\xC4 \xDF.txt") == "start \"C:\\\xC4 \xDF.txt\"");
}

TEST_CASE_FIXTURE(Machine, "the empty command starts nothing in particular") { CHECK(Start("") == "start "); }

TEST_CASE_FIXTURE(Machine, "every pair of double quotes becomes one, from left to right") {
    CHECK(Start("\"\"a\"\" b") == "start \"a\" b");
    CHECK(Start("\"\"\"a") == "start \"\"a");
    CHECK(Start("say \"\"") == "start \"say \"\"");
}

// --- mail

TEST_CASE_FIXTURE(Machine, "a mail address whose subject holds blanks goes to the handler with %20 for every blank") {
    Mail("C:\\Mail\\mail.exe %1");
    CHECK(Direct("mailto:a@b.c?subject=one two three") == "C:\\Mail\\mail.exe mailto:a@b.c?subject=one%20two%20three");
    CHECK(notes.empty());
}

TEST_CASE_FIXTURE(Machine, "the mail handler's other mark is replaced, too") {
    Mail("mail.exe \"%l\" /again %1");
    CHECK(Direct("mailto:a b") == "mail.exe \"mailto:a%20b\" /again mailto:a%20b");
}

TEST_CASE_FIXTURE(Machine, "a mail handler without a mark is run without the address") {
    Mail("mail.exe -compose");
    CHECK(Direct("mailto:a@b.c") == "mail.exe -compose");
}

TEST_CASE_FIXTURE(Machine, "the second mark is looked for in what the first replacement has made") {
    Mail("mail.exe %1");
    CHECK(Direct("mailto:a%lb") == "mail.exe mailto:amailto:a%lbb");
}

TEST_CASE_FIXTURE(Machine, "carriage returns become %20 only for a handler named like notes") {
    Mail("C:\\notes\\mail.exe %1");
    CHECK(Direct("mailto:a\rb\nc") == "C:\\notes\\mail.exe mailto:a%20b\nc");
    Mail("C:\\Notes\\mail.exe %1");
    CHECK(Direct("mailto:a\rb") == "C:\\Notes\\mail.exe mailto:a\rb");
}

TEST_CASE_FIXTURE(Machine, "a mail address goes to the mail handler also where it looks like a web page") {
    Mail("mail.exe %1");
    Browser("browser.exe %1");
    CHECK(Direct("mailto:a@www.b.c") == "mail.exe mailto:a@www.b.c");
}

TEST_CASE_FIXTURE(Machine, "a mail address without a handler is started with %20 for every blank") {
    CHECK(Start("mailto:a@b.c") == "start mailto:a@b.c");
    CHECK(Start("mailto:a@b.c?subject=one two") == "start \"mailto:a@b.c?subject=one%20two\"");
}

TEST_CASE_FIXTURE(Machine, "a mail address with a web marker and without a mail handler goes to the browser") {
    files = {"browser.exe"};
    Browser("browser.exe \"%1\"");
    CHECK(Direct("mailto:a@www.b.c?subject=one two") == "browser.exe \"mailto:a@www.b.c?subject=one two\"");
}

TEST_CASE_FIXTURE(Machine, "double quotes around a mail address meet those of the handler and stay single") {
    Mail("mail.exe \"%1\"");
    CHECK(Direct("\"mailto:a b\"") == "mail.exe \"mailto:a%20b\"");
}

// --- web pages

TEST_CASE_FIXTURE(Machine, "each of the three web markers leads to the browser") {
    files = {"browser.exe"};
    Browser("browser.exe %1");
    CHECK(Direct("C:\\x.htm") == "browser.exe C:\\x.htm");
    CHECK(Direct("http://a.b/c") == "browser.exe http://a.b/c");
    CHECK(Direct("www.a.b") == "browser.exe www.a.b");
    CHECK(Start("C:\\x.HTM") == "start C:\\x.HTM");
}

TEST_CASE_FIXTURE(Machine, "the file type of web pages and its command are noted") {
    files = {"C:\\browser.exe"};
    Browser("C:\\browser.exe %1");
    CHECK(Direct("www.a.b") == "C:\\browser.exe www.a.b");
    CHECK(notes == std::vector<std::string>{"htmlfile1:", "C:\\browser.exe %12:"});
}

TEST_CASE_FIXTURE(Machine, "without a registered file type of web pages the page is started") {
    CHECK(Start("www.a.b") == "start www.a.b");
    CHECK(notes == std::vector<std::string>{"1:"});
}

TEST_CASE_FIXTURE(Machine, "without a command of that file type the page is started") {
    classes[".htm"] = "htmlfile";
    CHECK(Start("http://a b") == "start \"http://a b\"");
    CHECK(notes == std::vector<std::string>{"htmlfile1:", "2:"});
}

TEST_CASE_FIXTURE(Machine,
                  "a page with a blank stands in single double quotes whether the handler has its own or not") {
    files = {"C:\\My Browser\\b.exe"};
    Browser("\"C:\\My Browser\\b.exe\" \"%1\"");
    CHECK(Direct("C:\\My Pages\\x.htm") == "\"C:\\My Browser\\b.exe\" \"C:\\My Pages\\x.htm\"");
    Browser("\"C:\\My Browser\\b.exe\" %1");
    CHECK(Direct("C:\\My Pages\\x.htm") == "\"C:\\My Browser\\b.exe\" \"C:\\My Pages\\x.htm\"");
}

TEST_CASE_FIXTURE(Machine, "of both marks only %l is replaced") {
    Browser("browser %1 %l %l");
    CHECK(Direct("www.a") == "browser %1 www.a www.a");
}

TEST_CASE_FIXTURE(Machine, "a handler without a mark gets the page behind a blank") {
    Browser("browser -nohome");
    CHECK(Direct("www.a b") == "browser -nohome \"www.a b\"");
}

TEST_CASE_FIXTURE(Machine, "a browser that does not exist is passed over") {
    Browser("C:\\gone.exe %1");
    CHECK(Start("www.a") == "start www.a");
    Browser("\"C:\\My Browser\\gone.exe\" %1");
    CHECK(Start("www.a") == "start www.a");
    Browser("C:\\gone.exe");
    CHECK(Start("www.a") == "start www.a");
}

TEST_CASE_FIXTURE(Machine, "a browser's path with doubled backslashes is looked for with single ones") {
    files = {"C:\\b\\b.exe"};
    Browser("C:\\\\b\\\\b.exe %1");
    CHECK(Direct("www.a") == "C:\\\\b\\\\b.exe www.a");
}

TEST_CASE_FIXTURE(Machine, "a program named without a point is not looked for") {
    Browser("browser %1");
    CHECK(Direct("www.a") == "browser www.a");
    Browser("\"\" %1");  // an empty path
    CHECK(Direct("www.a") == "\" www.a");
}

TEST_CASE_FIXTURE(Machine, "an unclosed double quote names the program up to the end") {
    files = {"C:\\b.exe"};
    Browser("\"C:\\b.exe");
    CHECK(Direct("www.a") == "\"C:\\b.exe www.a");
}

TEST_CASE_FIXTURE(Machine, "a browser named by a variable counts as missing, since its path is not expanded yet") {
    variables["ProgramFiles"] = "C:\\Programs";
    files = {"C:\\Programs\\b.exe"};
    Browser("%ProgramFiles%\\b.exe %1");
    CHECK(Start("www.a") == "start www.a");
}

// --- the command interpreter

TEST_CASE_FIXTURE(Machine, "the command interpreter runs documents itself and lets start take mail and web addresses") {
    CHECK(Start("C:\\My Letters\\a.txt", Shell::CommandInterpreter) == "cmd /c \"C:\\My Letters\\a.txt\"");
    CHECK(Start("mailto:a b", Shell::CommandInterpreter) == "cmd /c start \"mailto:a%20b\"");
    CHECK(Start("http://a", Shell::CommandInterpreter) == "cmd /c start http://a");
    CHECK(Start("www.a", Shell::CommandInterpreter) == "cmd /c www.a");
}

// --- variables

TEST_CASE_FIXTURE(Machine, "a variable is expanded, all of its places at once") {
    variables["TEMP"] = "C:\\Temp";
    CHECK(Start("%TEMP%\\a-%TEMP%.txt") == "start C:\\Temp\\a-C:\\Temp.txt");
}

TEST_CASE_FIXTURE(Machine, "variables are expanded after the handler was filled in, those of the handler too") {
    variables = {{"TEMP", "C:\\Temp"}, {"WINDIR", "C:\\Windows"}};
    Mail("%WINDIR%\\mail %1");
    CHECK(Direct("mailto:%TEMP%") == "C:\\Windows\\mail mailto:C:\\Temp");
}

TEST_CASE_FIXTURE(Machine, "a value with a blank is not wrapped, since wrapping comes first") {
    variables["HOME"] = "C:\\My Home";
    CHECK(Start("%HOME%\\a.txt") == "start C:\\My Home\\a.txt");
}

TEST_CASE_FIXTURE(Machine, "a value with a double quote is left out, since it would end what stands in double quotes") {
    variables = {{"evil", "a\" --run \"b"}, {"inner", "%evil%"}, {"home", "C:\\My Home"}};
    Browser("browser \"%1\" /home \"%home%\"");
    CHECK(Direct("http://a/%evil%") == "browser \"http://a/%evil%\" /home \"C:\\My Home\"");
    CHECK(Direct("http://a/%inner%/%evil%") == "browser \"http://a/%evil%/%evil%\" /home \"C:\\My Home\"");
    CHECK(Start("%evil%\\a.txt") == "start %evil%\\a.txt");
}

TEST_CASE_FIXTURE(Machine, "what the environment does not know stays, and the search goes on behind its second sign") {
    variables["b"] = "B";
    CHECK(Start("%a%b%") == "start %a%b%");
    CHECK(Start("%a%%b%") == "start %a%B");
    CHECK(Start("%%%b%") == "start %%B");
}

TEST_CASE_FIXTURE(Machine, "a single percent sign stays") {
    variables["x"] = "y";
    CHECK(Start("100%") == "start 100%");
    CHECK(Start("%x%%") == "start y%");
    CHECK(Start("%") == "start %");
}

TEST_CASE_FIXTURE(Machine, "an earlier place that was part of another pair is expanded with a later one") {
    variables["b"] = "B";
    CHECK(Start("%a%b%c%%b%") == "start %aBc%B");
}

TEST_CASE_FIXTURE(Machine, "a variable whose value names itself is expanded once") {
    variables["PATH"] = "%PATH%;%PATH%";
    CHECK(Start("%PATH%;%PATH%") == "start %PATH%;%PATH%;%PATH%;%PATH%");
}

TEST_CASE_FIXTURE(Machine, "a variable is expanded in each of its spellings") {
    variables = {{"TEMP", "C:\\Temp"}, {"temp", "C:\\Temp"}};  // as Windows lists them
    CHECK(Start("%TEMP%;%temp%;%Temp%") == "start C:\\Temp;C:\\Temp;%Temp%");
}

TEST_CASE_FIXTURE(Machine, "the search goes on behind the value, however long it is") {
    variables = {{"long", "12345678%b%"}, {"s", "1"}, {"b", "B"}};
    CHECK(Start("%long%") == "start 12345678%b%");
    CHECK(Start("%s%%b%") == "start 1B");
}

TEST_CASE_FIXTURE(Machine, "where pairs of one variable overlap the search goes on behind the last one replaced") {
    variables = {{"b", "x"}, {"uxbxc", "Z"}};
    CHECK(Start("%u%b%b%b%c%") == "start %uxbxc%");
}

TEST_CASE_FIXTURE(Machine, "more variables than a command can need are left as they are") {
    std::string command, expected;
    for (std::size_t i = 0; i < mostExpansions + 5; ++i) {
        const std::string name = "v" + std::to_string(i);
        variables[name] = "x";
        command += "%" + name + "%";
        expected += i < mostExpansions ? "x" : "%" + name + "%";
    }
    CHECK(Start(command) == "start " + expected);
}

TEST_CASE_FIXTURE(Machine, "variables that name each other end") {
    variables = {{"a", "%b%%b%"}, {"b", "%a%%a%"}};
    CHECK(Start("%a%").size() < 100);
    CHECK(Start("%a%%b%%a%%b%").size() < 200);
}

TEST_CASE_FIXTURE(Machine, "variables that multiply each other stop where a command would be too long for Windows") {
    for (int i = 0; i < 30; ++i) {
        const std::string next = "%v" + std::to_string(i + 1) + "%";
        variables["v" + std::to_string(i)] = next + next + next;
    }
    const std::string text = Start("%v0%%v0%%v1%%v2%%v3%%v4%%v5%%v6%%v7%%v8%%v9%%v10%%v11%%v12%%v13%%v14%");
    CHECK(text.size() <= longestCommand);
}

TEST_CASE_FIXTURE(Machine, "an expansion that is left out leaves the sign and goes on with the next variable") {
    variables = {{"long", std::string(longestCommand, 'x')}, {"short", "s"}};
    CHECK(Start("%long%%short%") == "start %long%s");
    variables["long"] = std::string(longestCommand - 7, 'x');
    CHECK(Start("%long%a") == "start " + std::string(longestCommand - 7, 'x') + "a");
    CHECK(Start("%long%ab") == "start %long%ab");
}

TEST_CASE_FIXTURE(Machine, "an expansion that is left out is not tried again at each of its places") {
    variables = {{"long", std::string(longestCommand, 'x')}};
    std::string command;
    for (int i = 0; i < 2000; ++i) command += "%long%";
    CHECK(Start(command) == "start " + command);
    CHECK(asked == 1);
}

TEST_CASE_FIXTURE(Machine, "a handler that would repeat an address beyond the bound keeps its mark") {
    Mail("mail.exe %1 %1 %1 %1");
    const std::string address = "mailto:" + std::string(10000, 'x');
    CHECK(Direct(address) == "mail.exe %1 %1 %1 %1");
}

TEST_CASE_FIXTURE(Machine, "carriage returns that would not fit as %20 stay") {
    Mail("notes.exe %1");
    const std::string fits = "mailto:" + std::string(10000, '\r'), tooLong = "mailto:" + std::string(11000, '\r');
    CHECK(Direct(fits).size() == 10 + 7 + 30000);
    CHECK(Direct(tooLong) == "notes.exe " + tooLong);
}

// --- what start starts

TEST_CASE("what start starts is what stands in double quotes, or all of it") {
    CHECK(StartTarget("start C:\\a.txt").file == "C:\\a.txt");
    CHECK(StartTarget("start \"C:\\My Letters\\a.txt\"").file == "C:\\My Letters\\a.txt");
    CHECK(StartTarget("start \"C:\\My Manual\\\"").file == "C:\\My Manual\\");
    CHECK(StartTarget("start C:\\My Home\\a.txt").file == "C:\\My Home\\a.txt");
    CHECK(StartTarget("start \"unclosed").file == "unclosed");
    CHECK(StartTarget("start ").file.empty());
    CHECK(StartTarget("start \"").file.empty());
}

TEST_CASE("what begins with www. is started as a web address, never as a file of that name") {
    CHECK(StartTarget("start www.a.com").file == "http://www.a.com");
    CHECK(StartTarget("start \"www.a.com/b c\"").file == "http://www.a.com/b c");
    CHECK(StartTarget("start WWW.a.com").file == "http://WWW.a.com");
    CHECK(StartTarget("start C:\\www.a").file == "C:\\www.a");
    CHECK(StartTarget("start www").file == "www");
}

TEST_CASE("what follows the closing double quote are arguments") {
    const Target target = StartTarget("start \"C:\\My Programs\\a.exe\"  /x \"b c\"");
    CHECK(target.file == "C:\\My Programs\\a.exe");
    CHECK(target.arguments == "/x \"b c\"");
    CHECK(StartTarget("start \"a\"").arguments.empty());
}

TEST_CASE("a text that is no file is read as a program and its arguments") {
    const Target target = AsProgram({"notepad C:\\a b.txt", {}});
    CHECK(target.file == "notepad");
    CHECK(target.arguments == "C:\\a b.txt");
}

TEST_CASE("the path of something that is missing is not read as a program") {
    CHECK(AsProgram({"C:\\My Letters\\a.txt", {}}).file.empty());
    CHECK(AsProgram({"\\\\server\\My Letters", {}}).file.empty());
    CHECK(AsProgram({"c:notepad a", {}}).file.empty());
    CHECK(AsProgram({"letter.txt", {}}).file.empty());
    CHECK(AsProgram({"my program", "/x"}).file.empty());
}

// --- registered commands

TEST_CASE("an extension gets the point that it lacks") {
    CHECK(WithPoint("chm") == ".chm");
    CHECK(WithPoint(".chm") == ".chm");
    CHECK(WithPoint("") == ".");
}

TEST_CASE("marks for the document are written as %l in double quotes, those in quotes without doubling them") {
    CHECK(WithQuotedMark("\"C:\\hh.exe\" %1") == "\"C:\\hh.exe\" \"%l\"");
    CHECK(WithQuotedMark("hh.exe \"%1\" %1") == "hh.exe \"%l\" \"%l\"");
    CHECK(WithQuotedMark("hh.exe \"%l\"") == "hh.exe \"%l\"");
    CHECK(WithQuotedMark("hh.exe") == "hh.exe");
    CHECK(WithQuotedMark("").empty());
}

TEST_CASE("a document takes the place of the mark and stands in its double quotes") {
    CHECK(ForDocument("hh.exe \"%l\"", "C:\\My Help\\cven.chm") == "hh.exe \"C:\\My Help\\cven.chm\"");
    CHECK(ForDocument("hh.exe %l", "C:\\x.chm") == "hh.exe %l");
}
