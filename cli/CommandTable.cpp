#include "CommandTable.h"

namespace cli {

using namespace Qt::StringLiterals;

namespace {

// Options used by several commands.
constexpr OptionSpec kYes{u"yes", nullptr, u"answer every question with Yes (OK)"};
constexpr OptionSpec kNo{u"no", nullptr, u"answer every question with No"};
constexpr OptionSpec kAnswers{u"answers", u"LIST",
                              u"answer the questions in order: yes, no or cancel, separated by commas; "
                              u"the last one goes for all that follow"};
constexpr OptionSpec kVerbose{u"verbose", nullptr, u"print questions, answers and status lines"};
constexpr OptionSpec kDatabase{u"database", u"FILE", u"use this database instead of the project's own"};

constexpr OptionSpec kCreateOptions[] = {
    {u"format", u"YEAR", u"1997, 2000 or 2002: the format year that the file remembers (2002)"}};

constexpr OptionSpec kConnectOptions[] = {
    {u"convert", u"ANSWER",
     u"yes or no: whether to convert a database of an older revision or a Jet file, and to import a foreign one (no)"}};

constexpr OptionSpec kCheckOptions[] = {{u"quick", nullptr, u"look at structure and rows only"}, kDatabase};

constexpr OptionSpec kImportOptions[] = {
    {u"out", u"DB", u"the new database; it must not exist"},
    {u"damaged", nullptr, u"take over what can be read of a damaged file, and list what is lost"}};

constexpr OptionSpec kDemoOptions[] = {
    {u"kind", u"KIND", u"recirculating (U-bend, the default) or once-through"},
    {u"tubes", u"N", u"number of tubes, about (3,400; once-through 15,500)"},
    {u"entries", u"N", u"number of report entries over all outages, about"},
    {u"outages", u"N", u"number of outages (3)"},
    {u"sections", u"N", u"number of sections of the tubesheet (none; 4 in a once-through component)"},
    {u"seed", u"S", u"another seed gives another project of the same kind (1)"}};

constexpr OptionSpec kConvertOptions[] = {
    {u"spec", u"FMT", u"the conversion spec (report_formats\\default.fmt of the project)"},
    {u"cal", u"N", u"cal number for entries that carry none, when the file name gives none (1)"},
    {u"sec", u"N", u"section for entries that carry none (0)"},
    {u"analyst", u"ID", u"analyst for entries that carry none"},
    {u"operator", u"ID", u"operator for entries that carry none"},
    {u"probe", u"TYPE", u"probe for entries that carry none"},
    {u"sn", u"TEXT", u"probe serial number for entries that carry none"},
    {u"oper-type", u"TYPE", u"operation type for entries that carry none (PRI)"},
    kYes,
    kNo,
    kAnswers,
    kVerbose};

constexpr OptionSpec kUploadOptions[] = {kDatabase, kYes, kNo, kAnswers, kVerbose};
constexpr OptionSpec kUploadComponentOptions[] = {kDatabase, kYes, kNo, kAnswers, kVerbose};

constexpr OptionSpec kSqlOptions[] = {
    {u"format", u"FORM", u"table (the default), csv or json"},
    {u"param", u"NAME=VALUE", u"the value of a parameter; may be repeated", true},
    {u"file", u"F", u"run the statements of a file, each ended by a semicolon at the end of a line"},
    kDatabase};

constexpr OptionSpec kSchemaOptions[] = {
    {u"format", u"FORM", u"text (the default) or json"}, {u"all", nullptr, u"system and hidden tables too"}, kDatabase};

constexpr OptionSpec kExplainOptions[] = {{u"format", u"FORM", u"text (the default) or json"}, kDatabase};

constexpr OptionSpec kFillOptions[] = {
    {u"map", u"FILE.map", u"the map that gets the fill; it is made when it is missing"},
    {u"select", u"TUBES", u"select a tube (\"12 47\"), or all, symbols, open or periph tubes; may be repeated", true},
    {u"region", u"WHERE", u"random, pattern: the whole map or the selected tubes (map)"},
    {u"tubes", u"WHICH", u"random, pattern: all, only those with symbols, or only open ones (all)", true},
    {u"tubes", u"FILE.csv", u"write the tubes of the new fill to this file; may stand beside the other --tubes", true},
    {u"percent", u"N", u"random: so many per cent of the tubes (10)"},
    {u"count", u"N", u"random: so many tubes"},
    {u"seed", u"N", u"random: the same seed gives the same sample (another one each time)"},
    {u"radius", u"R", u"box: distance from the selected tubes in units of the map (1)"},
    {u"first-row", u"N", u"pattern: first row (1)"},
    {u"first-col", u"N", u"pattern: first column (1)"},
    {u"row-inc", u"N", u"pattern: every n-th row (2)"},
    {u"col-inc", u"N", u"pattern: every n-th column (2)"},
    {u"first-tube", nullptr, u"pattern: column 1 of each row, too"},
    {u"last-tube", nullptr, u"pattern: the last tube of each row, too"},
    {u"symbol", u"C", u"the symbol (the next letter)"},
    {u"colour", u"RRGGBB", u"the colour"},
    kYes,
    kNo,
    kAnswers,
    kVerbose};

constexpr OptionSpec kMapOptions[] = {
    {u"map", u"FILE.map", u"a map file with its legend and header"},
    {u"header", u"FILE.hdr", u"a header file, in place of the map's header"},
    {u"query", u"FILE.qry", u"mark the tubes of this query; may be repeated, later ones show over earlier ones", true},
    {u"param", u"NAME=VALUE", u"the value of a query's parameter; may be repeated", true},
    {u"out", u"FILE", u"the picture: .emf, .pdf, .svg, .bmp, .png or .jpg"},
    {u"tubes", u"FILE.csv", u"write every tube with a symbol to this file; without --out no picture is made"},
    {u"paper", u"NAME", u"A3, A4, A5, Letter, Legal, Tabloid ..., lying across (the locale's)"},
    {u"size", u"WxH", u"in place of a paper: width and height in pixels, 150 an inch"},
    {u"title", u"TEXT", u"a title above the map, in place of the header's upper text"},
    {u"flip", u"AXES", u"h, v or hv: flip horizontally, vertically, or both"},
    kDatabase,
    kYes,
    kNo,
    kAnswers,
    kVerbose};

constexpr Command kCommands[] = {
    {u"create", u"DB [--format YEAR]", u"make an empty database with the schema",
     u"An existing file is left alone and is an error.", kCreateOptions, runCreate},
    {u"connect", u"DIR [--convert yes|no]", u"bring a project's database up to date",
     u"DIR is a project folder or a database file. Prints each step of the conversion, the answer, and the backup. "
     u"Only a database in a project's arvo folder is converted; the backup stands beside it with the extension ._db, "
     u"and "
     u"that of a Jet file is never replaced by another. Without --convert the steps are listed and nothing is "
     u"converted.",
     kConnectOptions, runConnect},
    {u"check", u"DIR [options]", u"look for damage inside a database",
     u"DIR is a project folder or a database file. Reads the whole file: its structure, the rows, and whether each "
     u"index has the rows of its table. Changes nothing. Damage is listed and is a failure; values that a rule of "
     u"their table refuses are listed as remarks. --quick leaves out the comparison of the indexes, which takes most "
     u"of the time.",
     kCheckOptions, runCheck},
    {u"import", u"FILE.mdb --out DB [--damaged]", u"copy a Jet file into a new database",
     u"Jet 3 and Jet 4 (Access 97 to 2003). Prints the tables with their rows, and what could not be carried over. The "
     u"file is only read, and a damaged one is refused without --damaged.",
     kImportOptions, runImport},
    {u"demo", u"DIR [options]", u"make a demo project",
     u"The same options and seed give the same files. DIR must not exist, or be empty.", kDemoOptions, runDemo},
    {u"convert", u"DIR TEXT... [options]", u"convert foreign text reports into report files",
     u"Each text becomes reports/CAL_TYPE.rep of the project. A report that exists is overwritten only with --yes.",
     kConvertOptions, runConvert},
    {u"upload", u"DIR REP... [options]", u"store report files in table report",
     u"Makes the project's database when it is missing. Each file goes in whole or not at all; the first failure ends "
     u"the command. Where the database is of an older revision, the first question is whether to convert it. Then they "
     u"come in this order for each file: unknown tubes (yes uploads them, no skips them), a cal "
     u"that "
     u"is there already (yes deletes its old rows, after a second question; no adds), another site or component.",
     kUploadOptions, runUpload},
    {u"upload-component", u"DIR [options]", u"store the component's tubes and landmarks in the database",
     u"Makes the project's database when it is missing. What tables tubes and landmarks hold is replaced, after a "
     u"question, whole or not at all. Where the database is of an older revision, the first question is whether to "
     u"convert "
     u"it; --yes says yes to both.",
     kUploadComponentOptions, runUploadComponent},
    {u"sql", u"DIR STATEMENT [options]", u"run Access SQL and print the rows",
     u"DIR is a project folder or a database file. Rows go to the standard output, for a statement without rows the "
     u"number "
     u"of rows affected. A parameter without a value is an error. With --file all statements run in one transaction; "
     u"json then gives one "
     u"object a statement. A cell that cannot be calculated is \"#Div/0!\", \"#Num!\" or \"#Error\", in json an object "
     u"with the number of its error; the object of a statement that fails has a member \"error\". The views and "
     u"aliases of a project's database are brought up to date first, whatever the "
     u"statement.",
     kSqlOptions, runSql},
    {u"schema", u"DIR [NAME] [options]", u"list tables, fields, indexes, relations and stored queries",
     u"With NAME only that table or stored query, and the relations of the table. The database is only read.",
     kSchemaOptions, runSchema},
    {u"explain", u"DIR STATEMENT [options]", u"show what the engine makes of a statement, without running it",
     u"Parameters with their types, columns with their sources, whether rows can be changed or why not, the statements "
     u"that the inner engine is given, and the indexes that it uses for them. The database is only read.",
     kExplainOptions, runExplain},
    {u"fill", u"DIR random|box|pattern --map FILE.map [options]", u"add a fill to a map file",
     u"The fill sees the symbols that the map's entries have painted. Prints the legend: symbol, type, description, "
     u"tubes "
     u"and hits of each entry. A random sample that found too few tubes is kept, told by message 1089, and is no "
     u"failure. Asks "
     u"before it replaces the map of another model.",
     kFillOptions, runFill},
    {u"map", u"DIR [--map FILE.map] [--query FILE.qry]... --out FILE [options]",
     u"paint the tubesheet with the legend of a map or the tubes of queries",
     u"The picture is the page that the window prints: header, legend, model, footer. Prints the legend: symbol, type, "
     u"description, tubes and hits of each entry.",
     kMapOptions, runMap},
    {u"help", u"[COMMAND]", u"explain the commands", u"", {}, runHelp},
};

} // namespace

std::span<const Command> commands()
{
    return kCommands;
}

const Command *findCommand(QStringView name)
{
    for (const Command &command : kCommands)
        if (name == QStringView(command.name))
            return &command;
    return nullptr;
}

QString helpOverview()
{
    QString text = u"arvo-cli: the work of ARVO without a window\n\nUsage: arvo-cli COMMAND ARGUMENT...\n\n"_s;
    for (const Command &command : kCommands)
        text += u"  %1%2\n"_s.arg(QStringView(command.name), -18).arg(QStringView(command.summary));
    text += u"\nDIR is a project's folder; most commands take a database file in its place."
            u"\nA file is named from the current folder. One that is named with a backslash, or from [PALOMINE_DIR], is"
            u"\nnamed from the project's folder: 'maps\\plan.map' (in quotes, since the shell drops the backslash)."
            u"\n\"arvo-cli help COMMAND\" explains one."
            u"\nExit status: 0 done, 1 failed (the reason is on the standard error stream), 2 wrong usage.\n"_s;
    return text;
}

QString helpOf(const Command &command)
{
    QString text = u"Usage: arvo-cli %1 %2\n\n%3\n"_s.arg(QStringView(command.name), QStringView(command.usage),
                                                          QStringView(command.summary));
    if (*command.details)
        text += u'\n' + QStringView(command.details) + u'\n';
    if (!command.options.empty())
        text += u'\n';
    for (const OptionSpec &option : command.options) {
        QString left = u"  --"_s + QStringView(option.name);
        if (option.placeholder)
            left += u' ' + QStringView(option.placeholder);
        text += left.leftJustified(24) + u' ' + QStringView(option.help) + u'\n';
    }
    return text;
}

} // namespace cli
