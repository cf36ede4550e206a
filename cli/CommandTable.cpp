#include "CommandTable.h"

namespace cli {

using namespace Qt::StringLiterals;

namespace {

// Options used by several commands.
constexpr OptionSpec kYes{u"yes", nullptr, u"answer every question with Yes (OK)"};
constexpr OptionSpec kNo{u"no", nullptr, u"answer every question with No"};
constexpr OptionSpec kAnswers{u"answers", u"LIST",
                              u"answer the questions in order: yes, no or cancel, separated by commas; "
                              u"the last one answers all further questions"};
constexpr OptionSpec kVerbose{u"verbose", nullptr, u"print questions, answers and status lines"};
constexpr OptionSpec kDryRun{u"dry-run", nullptr, u"tell what would be stored, and every problem; store nothing"};
constexpr OptionSpec kProblems{u"problems", u"F.csv", u"write the problems to this file"};
constexpr OptionSpec kOutcome{u"format", u"FORM", u"text (the default) or json: numbers and problems of each file",
                              false, u"text|json"};
constexpr OptionSpec kDatabase{u"database", u"FILE", u"use this database instead of the project's own"};

constexpr OptionSpec kCreateOptions[] = {{u"format", u"YEAR",
                                          u"1997, 2000 or 2002: the format year that the file remembers (2002)", false,
                                          u"1997|2000|2002"}};

constexpr OptionSpec kConnectOptions[] = {
    {u"convert", u"ANSWER",
     u"yes or no: whether to convert a database of an older revision or a Jet file, and to import a foreign one (no)",
     false, u"yes|no"}};

constexpr OptionSpec kCheckOptions[] = {{u"quick", nullptr, u"check only structure and rows"}, kDatabase};

constexpr OptionSpec kImportOptions[] = {
    {u"out", u"DB", u"the new database; it must not exist"},
    {u"damaged", nullptr, u"copy the readable part of a damaged file and list the losses"}};

constexpr OptionSpec kDemoOptions[] = {
    {u"kind", u"KIND", u"recirculating (U-bend, the default) or once-through", false, u"recirculating|once-through"},
    {u"tubes", u"N", u"approximate number of tubes (3,400; once-through 15,500)"},
    {u"entries", u"N", u"number of report entries over all outages"},
    {u"outages", u"N", u"number of outages (3)"},
    {u"sections", u"N", u"number of sections of the tubesheet (none; 4 in a once-through component)"},
    {u"seed", u"S", u"another seed gives another project of the same kind (1)"},
    {u"filled", nullptr,
     u"with its database, in the middle of the present outage: the last texts are left to convert and upload"}};

constexpr OptionSpec kNewProjectOptions[] = {
    {u"site", u"S", u"the site code"},
    {u"comp", u"C", u"the component code"},
    {u"outage", u"O", u"the name of the first outage"},
    {u"component", u"FROM", u"a text file with a table of tubes, or the folder of a component or a project"},
    {u"name", u"TEXT", u"title of the project (site and component)"},
    {u"date", u"DATE", u"of the outage, such as 2026-03-31"},
    {u"pitch", u"N", u"distance of neighboring tubes, for a table without x and y"},
    {u"pattern", u"KIND", u"square or triangular, for a table without x and y"}};

constexpr OptionSpec kConvertOptions[] = {
    {u"spec", u"FMT", u"the conversion spec (report_formats\\default.fmt of the project)"},
    {u"cal", u"N", u"cal number for entries and file names without one (1)"},
    {u"sec", u"N", u"section for entries without one (0)"},
    {u"analyst", u"ID", u"analyst for entries without one"},
    {u"operator", u"ID", u"operator for entries without one"},
    {u"probe", u"TYPE", u"probe for entries without one"},
    {u"sn", u"TEXT", u"probe serial number for entries without one"},
    {u"oper-type", u"TYPE", u"operation type for entries without one (PRI)"},
    kDryRun,
    kProblems,
    kOutcome,
    kYes,
    kNo,
    kAnswers,
    kVerbose};

constexpr OptionSpec kUploadOptions[] = {kDryRun, kProblems, kOutcome, kDatabase, kYes, kNo, kAnswers, kVerbose};
constexpr OptionSpec kRowOptions[] = {
    {u"format", u"FORM", u"table (the default), csv or json", false, u"table|csv|json"}, kDatabase};
constexpr OptionSpec kLogOptions[] = {
    {u"format", u"FORM", u"table (the default), csv or json", false, u"table|csv|json"}};
constexpr OptionSpec kDeleteCalOptions[] = {{u"site", u"S", u"the site code"},
                                            {u"comp", u"C", u"the component code"},
                                            {u"oper-type", u"T", u"the operation type"},
                                            {u"outage", u"O", u"the outage"},
                                            {u"sec", u"N", u"the section (0 without sections)"},
                                            {u"cal", u"N", u"the cal number"},
                                            kDatabase};
constexpr OptionSpec kUploadComponentOptions[] = {kDatabase, kYes, kNo, kAnswers, kVerbose};

constexpr OptionSpec kSqlOptions[] = {
    {u"format", u"FORM", u"table (the default), csv or json", false, u"table|csv|json"},
    {u"param", u"NAME=VALUE", u"the value of a parameter; may be repeated", true},
    {u"file", u"F", u"run the statements of a file, each ended by a semicolon at the end of a line"},
    kDatabase};

constexpr OptionSpec kQueryOptions[] = {
    {u"param", u"NAME=VALUE", u"the value of a parameter; may be repeated", true},
    {u"format", u"FORM", u"table (the default), csv or json", false, u"table|csv|json"},
    {u"out", u"FILE", u"write the rows to a file: .txt, .csv, .xlsx or .pdf"},
    kDatabase};

constexpr OptionSpec kQueriesOptions[] = {
    {u"format", u"FORM", u"text (the default) or json", false, u"text|json"},
    {u"versions", u"NAME", u"print the former texts of this query instead, the newest first"},
    kDatabase};

constexpr OptionSpec kStoreQueryOptions[] = {
    {u"version", u"N", u"store a former text of the query again (1: the newest); FILE is left out"},
    kDatabase,
    kYes,
    kNo,
    kAnswers,
    kVerbose};

constexpr OptionSpec kDeleteQueryOptions[] = {kDatabase};

constexpr OptionSpec kTubeOptions[] = {
    {u"param", u"NAME=VALUE", u"the value of a parameter of a tab's query; may be repeated", true}, kDatabase};

constexpr OptionSpec kFormatsOptions[] = {
    {u"import", u"FILE", u"replace the program's display formats by those of a file"},
    {u"export", u"FILE", u"write the display formats to a file"},
    kDatabase};

constexpr OptionSpec kSchemaOptions[] = {{u"format", u"FORM", u"text (the default) or json", false, u"text|json"},
                                         {u"all", nullptr, u"system and hidden tables too"},
                                         kDatabase};

constexpr OptionSpec kHistoryOptions[] = {
    {u"mode", u"MODE",
     u"latest: of each tube the latest of the outages (the default); selected: all of them; all: every outage", false,
     u"latest|selected|all"},
    {u"outages", u"A,B,...", u"the outages that are kept (every one)"},
    {u"defects", u"LIST",
     u"the codes that are kept, each with thresholds if wanted: CODE[:volts[:pcnt]],... (every code)"},
    {u"sort", u"ORDER", u"tube, column, indication, volts, phase or pcnt (sec, row, col, latest outage first)", false,
     u"tube|column|indication|volts|phase|pcnt"},
    {u"out", u"FILE.hst", u"store the kept entries as a history file"},
    {u"all", nullptr, u"print the entries that are not kept, too"},
    {u"format", u"FORM", u"table (the default), csv or json; with --out nothing is printed without it", false,
     u"table|csv|json"},
    kDatabase,
    kVerbose};

constexpr OptionSpec kRepairsOptions[] = {
    {u"view", u"VIEW", u"all (the default), scheduled, completed, or need-heat: completed with a heat number missing",
     false, u"all|scheduled|completed|need-heat"},
    {u"outage", u"O", u"only repairs of this outage"},
    {u"type", u"T", u"only repairs of this type, such as Plug"},
    {u"format", u"FORM", u"table (the default), csv or json", false, u"table|csv|json"},
    kDatabase};

constexpr OptionSpec kScheduleOptions[] = {
    {u"tubes", u"F.lst", u"the list of the tubes"},
    {u"query", u"F.qry", u"in place of a list: the tubes that this query returns"},
    {u"param", u"NAME=VALUE", u"the value of a query's parameter; may be repeated", true},
    {u"type", u"T", u"the repair type: Plug, Sleeve, Tubesheet Plug, ...; any text"},
    {u"set", u"FIELD=VALUE", u"another field of table repairs, such as vendor; may be repeated", true},
    kDatabase,
    kYes,
    kNo,
    kAnswers,
    kVerbose};

constexpr OptionSpec kCompleteOptions[] = {{u"tubes", u"F.lst", u"the list of the tubes"},
                                           {u"type", u"T", u"only repairs of this type"},
                                           {u"date", u"D", u"date of completion, with a time if wanted (now)"},
                                           kDatabase,
                                           kYes,
                                           kNo,
                                           kAnswers,
                                           kVerbose};

constexpr OptionSpec kFormat{u"format", u"FORM", u"table (the default), csv or json", false, u"table|csv|json"};
constexpr OptionSpec kEntryNumbers{u"entry-numbers", nullptr,
                                   u"lines begin with entry numbers, also in a file that does not end in .lst"};

constexpr OptionSpec kPlansOptions[] = {kFormat, kDatabase};
constexpr OptionSpec kPlanOptions[] = {
    {u"check", nullptr, u"look in table report which tubes were analyzed in the present outage"},
    {u"incomplete", u"CODE,CODE", u"defect codes that do not count as analyzing a tube (those of the plan options)"},
    {u"out", u"FILE", u"write the plan to a file: .pln or .csv"},
    kFormat,
    kDatabase};
constexpr OptionSpec kUploadPlanOptions[] = {
    {u"name", u"N", u"the name in the database (that in the file)"}, kDatabase, kYes, kNo, kAnswers, kVerbose};
constexpr OptionSpec kParseListOptions[] = {kEntryNumbers};
constexpr OptionSpec kTubeSetOptions[] = {{u"out", u"F.lst", u"write the set to a list file"}, kFormat, kDatabase};
constexpr OptionSpec kUploadTubeSetOptions[] = {{u"name", u"N", u"the name of the tube set"},
                                                {u"desc", u"TEXT", u"the description (the notes of the list)"},
                                                kEntryNumbers,
                                                kDatabase,
                                                kYes,
                                                kNo,
                                                kAnswers,
                                                kVerbose};
constexpr OptionSpec kDeleteOptions[] = {kDatabase, kYes, kNo, kAnswers, kVerbose};

constexpr OptionSpec kExplainOptions[] = {{u"format", u"FORM", u"text (the default) or json", false, u"text|json"},
                                          kDatabase};

constexpr OptionSpec kFillOptions[] = {
    {u"map", u"FILE.map", u"the map to which the fill is added; created if it does not exist"},
    {u"select", u"TUBES", u"select a tube (\"12 47\"), or all, symbols, open or periph tubes; may be repeated", true},
    {u"region", u"WHERE", u"random, pattern: the whole map or the selected tubes (map)"},
    {u"tubes", u"WHICH", u"random, pattern: all, only those with symbols, or only open ones (all)", true},
    {u"tubes", u"FILE.csv", u"write the tubes of the new fill to this file; may be combined with the other --tubes",
     true},
    {u"percent", u"N", u"random: percentage of the tubes (10)"},
    {u"count", u"N", u"random: number of tubes"},
    {u"seed", u"N", u"random: the same seed gives the same sample (a new one each time)"},
    {u"radius", u"R", u"box: distance from the selected tubes in units of the map (1)"},
    {u"first-row", u"N", u"pattern: first row (1)"},
    {u"first-col", u"N", u"pattern: first column (1)"},
    {u"row-inc", u"N", u"pattern: every n-th row (2)"},
    {u"col-inc", u"N", u"pattern: every n-th column (2)"},
    {u"first-tube", nullptr, u"pattern: also column 1 of each row"},
    {u"last-tube", nullptr, u"pattern: also the last tube of each row"},
    kEntryNumbers,
    {u"symbol", u"C", u"the symbol (the next letter)"},
    {u"colour", u"RRGGBB", u"the colour"},
    kDatabase,
    kYes,
    kNo,
    kAnswers,
    kVerbose};

constexpr OptionSpec kMapOptions[] = {
    {u"map", u"FILE.map", u"a map file with its legend and header"},
    {u"header", u"FILE.hdr", u"a header file, instead of the map's header"},
    {u"query", u"FILE.qry", u"mark the tubes of this query; may be repeated; later ones are painted over earlier ones",
     true},
    {u"param", u"NAME=VALUE", u"the value of a query's parameter; may be repeated", true},
    {u"out", u"FILE", u"the picture: .emf, .pdf, .svg, .bmp, .png or .jpg"},
    {u"tubes", u"FILE.csv", u"write every tube with a symbol to this file; without --out no picture is made"},
    {u"paper", u"NAME", u"A3, A4, A5, Letter, Legal, Tabloid ..., landscape (the locale's)"},
    {u"size", u"WxH", u"instead of a paper: width and height in pixels, 150 per inch"},
    {u"title", u"TEXT", u"a title above the map, instead of the header's upper text"},
    {u"flip", u"AXES", u"h, v or hv: flip horizontally, vertically, or both", false, u"h|v|hv"},
    kDatabase,
    kYes,
    kNo,
    kAnswers,
    kVerbose};

constexpr Command kCommands[] = {
    {u"create", u"DB [--format YEAR]", u"make an empty database with the schema",
     u"It is an error if the file exists; the file is then unchanged.", kCreateOptions, runCreate},
    {u"connect", u"DIR [--convert yes|no]", u"bring a project's database up to date",
     u"DIR is a project folder or a database file. Prints each step of the conversion, the answer, and the backup. "
     u"Only a database in a project's arvo folder is converted; the backup is beside it with the extension ._db, and "
     u"the backup of a Jet file is never overwritten. Without --convert the steps are listed and nothing is converted.",
     kConnectOptions, runConnect},
    {u"check", u"DIR [options]", u"check a database for damage",
     u"DIR is a project folder or a database file. Reads the whole file: its structure, the rows, and whether each "
     u"index has the rows of its table. Changes nothing. If damage is found, it is listed and the command fails; "
     u"values "
     u"that violate a rule of their table are listed as remarks. --quick skips the comparison of the indexes, which "
     u"takes most of the time.",
     kCheckOptions, runCheck},
    {u"import", u"FILE.mdb --out DB [--damaged]", u"copy a Jet file into a new database",
     u"Jet 3 and Jet 4 (Access 97 to 2003). Prints the tables with their rows, and the losses. The file is only read. "
     u"A "
     u"damaged file is refused without --damaged.",
     kImportOptions, runImport},
    {u"demo", u"DIR [options]", u"make a demo project",
     u"The same options and seed give the same files. DIR must be empty or not exist.", kDemoOptions, runDemo},
    {u"new-project", u"DIR --site S --comp C --outage O --component FOLDER|TUBES.txt [options]",
     u"make a project from a table of tubes",
     u"A spreadsheet program writes the table as text, with cells apart by tabs, semicolons or commas. The first line "
     u"names the columns: row, col, and optionally sec, x, y, periphery. Without x and y, --pitch and --pattern give "
     u"the positions. Every line that cannot be used is printed with its reason; then no project is made. DIR must be "
     u"empty or not exist. The project has a database with the tubes and landmarks of the component.",
     kNewProjectOptions, runNewProject},
    {u"convert", u"DIR TEXT... [options]", u"convert foreign text reports into report files",
     u"Each text becomes reports/CAL_TYPE.rep of the project. A report that exists is overwritten only with --yes. "
     u"Without a format file report_formats/default.fmt the built-in format is used.",
     kConvertOptions, runConvert},
    {u"upload", u"DIR REP... [options]", u"store report files in table report",
     u"Creates the project's database if it is missing. Each file is stored completely or not at all; the first "
     u"failure "
     u"ends the command. If the database is of an older revision, the first question is whether to convert it. Then "
     u"for "
     u"each file, in this order: unknown tubes (yes uploads them, no skips them), an existing cal (yes deletes its old "
     u"rows, after a second question; no adds), another site or component. --dry-run does the same in a transaction "
     u"that is undone; its numbers are those of the upload that follows "
     u"with the same answers.",
     kUploadOptions, runUpload},
    {u"cals", u"DIR [options]", u"list the cals of table report with their numbers of entries",
     u"A cal is the entries with the same site, component, operation type, outage, section and cal number. The "
     u"database is only read.",
     kRowOptions, runCals},
    {u"delete-cal", u"DIR --site S --comp C --oper-type T --outage O --sec N --cal N",
     u"delete the entries of a cal from table report", u"Asks nothing. Fails if there are none.", kDeleteCalOptions,
     runDeleteCal},
    {u"log", u"DIR [options]", u"list the uploads and conversions of a project",
     u"Each with its time, user, file, state and numbers. Of an upload that was interrupted, by a power cut for "
     u"instance, the database tells whether its entries are stored.",
     kLogOptions, runLog},
    {u"upload-component", u"DIR [options]", u"store the component's tubes and landmarks in the database",
     u"Creates the project's database if it is missing. After a question, the content of tables tubes and landmarks is "
     u"replaced, completely or not at all. If the database is of an older revision, the first question is whether to "
     u"convert it; --yes answers both with Yes.",
     kUploadComponentOptions, runUploadComponent},
    {u"sql", u"DIR STATEMENT [options]", u"run Access SQL and print the rows",
     u"DIR is a project folder or a database file. Rows are written to standard output; for a statement without rows, "
     u"the number of rows affected. A parameter without a value is an error. With --file all statements run in one "
     u"transaction; json then gives one object per statement. A cell that cannot be calculated is \"#Div/0!\", "
     u"\"#Num!\" "
     u"or \"#Error\", in json an object with the number of its error; the object of a statement that fails has a "
     u"member "
     u"\"error\". For every statement, the views and aliases of a project's database are brought up to date first.",
     kSqlOptions, runSql},
    {u"query", u"DIR NAME|FILE.qry [options]", u"run a stored query or a query file",
     u"A name that ends in .qry is a file, any other a query of the database. Rows go to the standard output in the "
     u"form of --format. With --out they go to a file, whose ending says the form, and the number of rows is printed: "
     u".txt has every row as the window exports it, in the widths of the display formats; .csv the values; .xlsx the "
     u"values with their types; .pdf the page that the window prints. An existing file is replaced. A query without "
     u"rows is run, and the number of rows affected printed; with --out it is refused. A parameter without a value is "
     u"an error.",
     kQueryOptions, runQuery},
    {u"queries", u"DIR [options]", u"list the stored queries with their kinds and parameters",
     u"The database is only read. Views, whose names end with #, are not listed. The last 20 texts of a query that was "
     u"stored over or deleted are kept beside the "
     u"database; --versions prints them.",
     kQueriesOptions, runQueries},
    {u"store-query", u"DIR NAME FILE|- [options]", u"store a query in the database",
     u"NAME has at most 30 characters. FILE is a query file or any text file with one statement; - is the standard "
     u"input. Asks before it replaces a query of that name; the replaced text is kept as a version. A name that ends "
     u"with # belongs to a view and is refused, and so is a text with a syntax error.",
     kStoreQueryOptions, runStoreQuery},
    {u"delete-query", u"DIR NAME [options]", u"delete a stored query",
     u"Asks nothing; the text is kept as a version, which \"arvo-cli store-query DIR NAME --version 1\" stores again.",
     kDeleteQueryOptions, runDeleteQuery},
    {u"tube", u"DIR ROW COL [SEC] [options]", u"print what the database holds about a tube",
     u"The rows of each tab of the tube dialog: the report entries, then the tabs of the options. ROW, COL and SEC are "
     u"numbers, or labels where the component has labels.",
     kTubeOptions, runTube},
    {u"formats", u"DIR [--import FILE|--export FILE]", u"list, import or export the display formats",
     u"Without an option the formats of all fields are listed. An imported entry with a width or alignment that is not "
     u"possible is refused and named; the others are taken. Fields that the file does not have get the default.",
     kFormatsOptions, runFormats},
    {u"schema", u"DIR [NAME] [options]", u"list tables, fields, indexes, relations and stored queries",
     u"With NAME only that table or stored query, and the relations of the table. The database is only read.",
     kSchemaOptions, runSchema},
    {u"history", u"DIR [options]", u"list results of past outages, and make a history file",
     u"Takes the rows of table report, numbers tubes and the outages of each tube (rank 0 is its latest), and keeps "
     u"those that pass the outages and codes. Outages compare as text. An empty volts or pcnt counts as 0 at a "
     u"threshold. Largest values stand first; entries that sort equal keep the order sec, row, col, latest outage. A "
     u"threshold below 0 is none. The database is only read.",
     kHistoryOptions, runHistory},
    {u"repairs", u"DIR [options]", u"list the repairs of tubes",
     u"Prints the rows of table repairs, sorted by section, row, column, type and outage. The database is only read.",
     kRepairsOptions, runRepairs},
    {u"schedule-repairs", u"DIR --tubes F.lst|--query F.qry --type T [options]", u"schedule a repair for each tube",
     u"Adds a row to table repairs for each tube, with site, component and outage of the project and the present "
     u"time, all or none. Tubes that do not exist are named and passed over. Tells when there are duplicates: repairs "
     u"of "
     u"one tube with the same type and location.",
     kScheduleOptions, runScheduleRepairs},
    {u"complete-repairs", u"DIR --tubes F.lst [options]", u"mark scheduled repairs as completed",
     u"Sets the date of completion of every scheduled repair of these tubes, all or none. Tubes without one are named. "
     u"Asks before it overwrites what another program has changed meanwhile.",
     kCompleteOptions, runCompleteRepairs},
    {u"plans", u"DIR [options]", u"list the inspection plans of the database", u"The database is only read.",
     kPlansOptions, runPlans},
    {u"plan", u"DIR NAME|FILE.pln [options]", u"print an inspection plan, and check it",
     u"A name that ends in .pln is a file, if there is one; any other is a plan of the database. Prints entry (from "
     u"1), section, row, "
     u"column, acquired and analyzed. The database is only read, so --check stores nothing; with --out FILE.pln the "
     u"checked plan is stored as a file.",
     kPlanOptions, runPlan},
    {u"upload-plan", u"DIR FILE.pln [options]", u"store a plan file in the database",
     u"Asks before it replaces a plan of that name. What is deleted is the plan with the name in the file, so under "
     u"another name that exists the upload fails, and the plan with the name in the file is gone from the database.",
     kUploadPlanOptions, runUploadPlan},
    {u"delete-plan", u"DIR NAME [options]", u"delete a plan from the database", u"Asks only with --no or --answers.",
     kDeleteOptions, runDeletePlan},
    {u"parse-list", u"DIR FILE [--entry-numbers]", u"show how the lines of a tube list are understood",
     u"Prints a JSON object: each line with its number, text, entry number and address, and the index of its tube, "
     u"null if there is none; the number of lines that are not understood; and the notes.",
     kParseListOptions, runParseList},
    {u"tube-sets", u"DIR [options]", u"list the tube sets of the database", u"The database is only read.",
     kPlansOptions, runTubeSets},
    {u"tube-set", u"DIR NAME [options]", u"print a tube set, or write it to a list file",
     u"The description becomes the notes of the list. The database is only read.", kTubeSetOptions, runTubeSet},
    {u"upload-tube-set", u"DIR FILE --name N [options]", u"store a tube list as tube set in the database",
     u"Lines that name no tube are printed as warnings and left out. Asks twice before it replaces a set of that name.",
     kUploadTubeSetOptions, runUploadTubeSet},
    {u"delete-tube-set", u"DIR NAME [options]", u"delete a tube set from the database",
     u"Asks only with --no or --answers.", kDeleteOptions, runDeleteTubeSet},
    {u"explain", u"DIR STATEMENT [options]", u"explain how the engine executes a statement, without running it",
     u"Tells in words what is read, by which index, how many rows, and which index would make it faster. Then prints "
     u"parameters with their types, columns with their sources, whether rows can be changed or why not, the SQL "
     u"passed to the inner engine, and the indexes that it uses. The database is only read.",
     kExplainOptions, runExplain},
    {u"fill", u"DIR random|box|pattern|list ... --map FILE.map [options]", u"add a fill to a map file",
     u"\"list\" is followed by a list file (.lst or .txt) or the name of a tube set. The fill is computed on the map "
     u"with the symbols of its entries. Prints the legend: symbol, type, description, "
     u"tubes and hits of each entry. If a random sample has too few tubes, it is kept, message 1089 is printed, and "
     u"the "
     u"command succeeds. Asks before it replaces the map of another model.",
     kFillOptions, runFill},
    {u"map", u"DIR [--map FILE.map] [--query FILE.qry]... --out FILE [options]",
     u"paint the tubesheet with the legend of a map or the tubes of queries",
     u"The picture is the page as printed by the window: header, legend, model, footer. Prints the legend: symbol, "
     u"type, "
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

static constexpr char16_t kSummary[] = u"ARVO without a window";
static const QString kFiles =
    u"DIR is a project's folder; most commands also accept a database file.\n"
    u"File names are relative to the current folder. A name with a backslash, or that begins "
    u"with\n[PALOMINE_DIR], is relative to the project's folder: 'maps\\plan.map' (in quotes, "
    u"since the shell\nremoves the backslash).\n"_s;
static const QString kStatus = u"0 done, 1 failed (the reason is on the standard error stream), 2 wrong usage."_s;

QString helpOverview()
{
    QString text = u"arvo-cli: "_s + kSummary + u"\n\nUsage: arvo-cli COMMAND ARGUMENT...\n\n"_s;
    for (const Command &command : kCommands)
        text += u"  %1%2\n"_s.arg(QStringView(command.name), -18).arg(QStringView(command.summary));
    text += u'\n' + kFiles +
            u"\"arvo-cli help COMMAND\" explains a command; \"arvo-cli --version\" prints the version.\n"
            u"Exit status: "_s +
            kStatus + u'\n';
    return text;
}

static tarnwick::CommandText textOf(const Command &command)
{
    return {command.name, command.usage, command.summary, command.details, command.options};
}

QString helpOf(const Command &command)
{
    return tarnwick::commandHelp(u"arvo-cli"_s, textOf(command));
}

tarnwick::ProgramManual programManual()
{
    tarnwick::ProgramManual manual{
        .program =
            {u"arvo-cli",
             u"COMMAND ARGUMENT...",
             kSummary,
             u"Works on projects of eddy-current inspections of steam-generator tubes as the program arvo does, "
             u"for scripts and for machines without a display. Results go to the standard output, messages to the "
             u"standard error stream. Nothing is asked: questions are answered by options.",
             {}},
        .commands = {},
        .sections = {{u"PROJECTS AND FILES"_s, kFiles},
                     {u"EXIT STATUS"_s, kStatus},
                     tarnwick::environmentSection(),
                     tarnwick::filesSection(),
                     {u"SEE ALSO"_s, u"arvo(1)"_s}}};
    for (const Command &command : kCommands)
        manual.commands.append(textOf(command));
    return manual;
}

} // namespace cli
