#include <dao/functions/Functions.h>
#include <gtest/gtest.h>
#include <memory>
#include <QString>
#include <sqlite3.h>

namespace {

// Calls the functions through SQLite, without the compiler.
class FunctionsTest : public ::testing::Test
{
protected:
    FunctionsTest()
    {
        sqlite3_open(":memory:", &m_connection);
        dao::functions::registerAll(m_connection);
        execute("CREATE TABLE n(x); INSERT INTO n VALUES (2),(4),(4),(4),(5),(5),(7),(9),(NULL);");
    }
    ~FunctionsTest() override { sqlite3_close(m_connection); }

    void execute(const char *sql) { ASSERT_EQ(sqlite3_exec(m_connection, sql, nullptr, nullptr, nullptr), SQLITE_OK); }

    // The value as text, "Null", or the error.
    std::string value(const std::string &expression)
    {
        const std::string sql = expression.find("FROM") == std::string::npos ? "SELECT " + expression : expression;
        sqlite3_stmt *statement = nullptr;
        if (sqlite3_prepare_v2(m_connection, sql.c_str(), -1, &statement, nullptr) != SQLITE_OK)
            return sqlite3_errmsg(m_connection);
        const std::unique_ptr<sqlite3_stmt, int (*)(sqlite3_stmt *)> owner(statement, sqlite3_finalize);
        if (sqlite3_step(statement) != SQLITE_ROW)
            return sqlite3_errmsg(m_connection);
        const auto *text = sqlite3_column_text(statement, 0);
        return text ? reinterpret_cast<const char *>(text) : "Null";
    }

    struct Case
    {
        const char *expression;
        const char *expected;
    };
    void check(std::initializer_list<Case> cases)
    {
        for (const Case &c : cases)
            EXPECT_EQ(value(c.expression), c.expected) << c.expression;
    }
    // Checks only the error number; the text comes from the table of errors.
    void checkFaults(int number, std::initializer_list<const char *> expressions)
    {
        const std::string prefix = "dao:" + std::to_string(number) + ":";
        for (const char *expression : expressions)
            EXPECT_EQ(value(expression).substr(0, prefix.size()), prefix) << expression;
    }

    sqlite3 *m_connection = nullptr;
};

} // namespace

TEST_F(FunctionsTest, OperatorsFollowTheDialect)
{
    check({{"jet_divide(7,2)", "3.5"},
           {"jet_int_divide(7,2)", "3"},
           {"jet_int_divide(8.5,2)", "4"},
           {"jet_int_divide(-7,2)", "-3"},
           {"jet_int_divide(2.5,1)", "2"},
           {"jet_int_divide(3.5,1)", "4"},
           {"jet_mod(13,5)", "3"},
           {"jet_mod(-7,3)", "-1"},
           {"jet_add('25',12)", "37.0"},
           {"jet_add('a','b')", "ab"},
           {"jet_add('a',NULL)", "Null"},
           {"jet_add(9223372036854775807,1)", "9.22337203685478e+18"},
           {"jet_concatenate('a',NULL)", "a"},
           {"jet_concatenate(NULL,NULL)", "Null"},
           {"jet_concatenate(1,2)", "12"},
           {"jet_power(2,-1)", "0.5"}});
    checkFaults(11, {"jet_divide(1,0)", "jet_int_divide(1,0.4)", "jet_mod(1,0)"});
    checkFaults(6, {"jet_int_divide(3000000000,1)", "jet_power(10,400)", "jet_int_divide(-2147483648,-1)"});
    checkFaults(5, {"jet_power(-8,0.5)"});
    checkFaults(13, {"jet_add('a',1)"});
    checkFaults(3354, {"jet_raise(3354)"});
}

TEST_F(FunctionsTest, LikeMatchesPatternsOfTheDialect)
{
    check({{"jet_like('A*','abc')", "1"},
           {"jet_like('a#','a1')", "1"},
           {"jet_like('a[*]a','a*a')", "1"},
           {"jet_like('[!a-e]','f')", "1"},
           {"jet_like('[!a-e]','C')", "0"},
           {"jet_like('a%','a%')", "1"},
           {"jet_like('a%','ab')", "0"},
           {"jet_like('*b*d','abcd')", "1"},
           {"jet_like('*','')", "1"},
           {"jet_like('?','')", "0"},
           {"jet_like('[a','[a')", "0"},
           {"jet_like('[z-a]','m')", "0"},
           {"jet_like('a[]b','ab')", "1"},
           {"jet_like('[a-]','-')", "1"},
           {"jet_like(NULL,'a')", "Null"}});
    // A pattern with exponential backtracking in a naive matcher.
    const std::string text(20000, 'a');
    EXPECT_EQ(value("jet_like('*a*a*a*a*a*a*a*a*b','" + text + "')"), "0");
}

TEST_F(FunctionsTest, Conversions)
{
    check({{"jet_cint(2.5)", "2"},
           {"jet_cint(3.5)", "4"},
           {"jet_cbyte('13.7')", "14"},
           {"jet_ccur('57.12346')", "57.1235"},
           {"jet_val('1615 198th')", "1615198.0"},
           {"jet_val('12 22.3x')", "1222.3"},
           {"jet_val('&HFFFF')", "-1.0"},
           {"jet_val('&H1FFFF')", "131071.0"},
           {"jet_val('')", "0.0"},
           {"jet_val('1e3x')", "1000.0"},
           {"jet_val('-')", "0.0"},
           {"jet_str(4, 5)", " 5"},
           {"jet_str(7, -5.5)", "-5.5"},
           {"jet_hex(4, 255)", "FF"},
           {"jet_hex(4, -1)", "FFFFFFFF"},
           {"jet_oct(4, 8)", "10"},
           {"jet_cdbl('&H1a')", "26.0"},
           {"jet_cstr(8,37623.2916666667)", "1/2/2003 7:00:00 AM"},
           {"jet_cstr(1,-1)", "True"},
           {"jet_cbool('false')", "0"},
           {"jet_cbool(5)", "-1"}});
    checkFaults(94, {"jet_cint(NULL)", "jet_cstr(10,NULL)"});
    checkFaults(6, {"jet_cint(40000)", "jet_cbyte(-1)", "jet_clng(3e9)"});
    checkFaults(13, {"jet_cdbl('abc')", "jet_cdate('no date')"});
}

TEST_F(FunctionsTest, Texts)
{
    check({{"jet_instr('AFOOBAR','foo')", "2"},
           {"jet_instr(1,'AFOOBAR','foo',0)", "0"},
           {"jet_instr(3,'abc','')", "3"},
           {"jet_instrrev('AFOOBARFOOBAR','FOO',9)", "2"},
           {"jet_instrrev('AFOOBARFOOBAR','FOO',10)", "8"},
           {"jet_strconv('FOO bar',3)", "Foo Bar"},
           {"jet_strconv('aß',1)||jet_lcase('İA')||jet_format(10,'maß','>')", "AßİaMAß"},
           {"jet_replace('foo','o','a',2)", "aa"},
           {"jet_replace('aaa','a','b',1,2)", "bba"},
           {"jet_strcomp('FOO','foo')", "0"},
           {"jet_strcomp('FOO','bar',0)", "-1"},
           {"jet_left('abc',9)", "abc"},
           {"jet_mid('abc',2)", "bc"},
           {"jet_mid('abc',9)", ""},
           {"jet_right('abc',2)", "bc"},
           {"jet_len(12.5)", "4"},
           {"jet_string(3,'xy')", "xxx"},
           {"jet_string(2,65)", "AA"},
           {"jet_chr(128)", "\xE2\x82\xAC"},
           {"jet_asc('\xE2\x82\xAC')", "128"},
           {"jet_trim('  a ')", "a"},
           {"jet_left(NULL,1)", "Null"},
           {"jet_strreverse('abc')", "cba"}});
    checkFaults(5, {"jet_left('a',-1)", "jet_mid('a',0)", "jet_asc('')", "jet_chr(256)", "jet_strconv('a',9)"});
    checkFaults(94, {"jet_replace(NULL,'a','b')"});
    checkFaults(6, {"jet_space(100000000)"});
}

TEST_F(FunctionsTest, Dates)
{
    // 35095 is 1/31/1996; 37623 is 1/2/2003; 43103 is 1/3/2018
    check({{"jet_format(8,jet_dateadd('m',1,35095),'Short Date')", "2/29/1996"},
           {"jet_datediff('yyyy','12/31/2002','1/1/2003')", "1"},
           {"jet_datediff('ww','12/31/2017','1/1/2018',2)", "1"},
           {"jet_datediff('n','1:37:59','1:38:00')", "1"},
           {"jet_datediff('d','1/1/2003','12/31/2002')", "-1"},
           {"jet_datepart('ww','1/3/2018',5,2)", "53"},
           {"jet_datepart('ww','12/31/2018')", "53"},
           {"jet_datepart('ww','12/31/2018',2,2)", "1"},
           {"jet_datepart('y','12/31/2016')", "366"},
           {"jet_format(8,jet_dateserial(2014,-5,38),'m/d/yyyy')", "8/7/2013"},
           {"jet_format(8,jet_timeserial(-10,0,0),'Long Time')", "2:00:00 PM"},
           {"jet_weekdayname(1,0,3)", "Tuesday"},
           {"jet_monthname(2,-1)", "Feb"},
           {"jet_weekday(37623)", "5"},
           {"jet_hour(-1.25)", "6"},
           {"jet_year(NULL)", "Null"},
           {"jet_format(8,jet_dateadd('s',-1,37623),'General Date')", "1/1/2003 11:59:59 PM"}});
    checkFaults(5, {"jet_dateadd('x',1,1)", "jet_dateadd('yyyy',9000,37623)", "jet_weekday(1,8)", "jet_monthname(13)"});
}

TEST_F(FunctionsTest, FormatOfNumbers)
{
    check({{"jet_format(7,-12345.6789,'Currency')", "($12,345.68)"},
           {"jet_format(7,12345.6789,'Standard')", "12,345.68"},
           {"jet_format(7,12345.6789,'General Number')", "12345.6789"},
           {"jet_format(7,0.12345,'Percent')", "12.34%"},
           {"jet_format(7,12345.6789,'Scientific')", "1.23E+04"},
           {"jet_format(7,9.996,'0.00E-0')", "1.00E1"},
           {"jet_format(7,0,'0.##')", "0."},
           {"jet_format(7,1234567,'#,##0')", "1,234,567"},
           {"jet_format(7,1234567,'0,.0')", "1234.6"},
           {"jet_format(7,-13,'\\p0.00\"blah\"')", "-p13.00blah"},
           {"jet_format(7,5,'000')", "005"},
           {"jet_format(7,0,'0;;\"none\"')", "none"},
           {"jet_format(4,1234,'#-#')", "123-4"},
           {"jet_format(7,NULL,'0;0;0;\"null\"')", "null"},
           {"jet_format(7,-0.001,'0.00')", "0.00"},
           {"jet_format(10,'foo','0.00')", "foo"},
           {"jet_format(10,'3.5','0.00')", "3.50"},
           {"jet_format(1,-1,'Yes/No')", "Yes"},
           {"jet_format(7,0.5,'.00')", ".50"},
           {"jet_format(7,1234.5,'$#,##0.00 \"net\"')", "$1,234.50 net"},
           {"jet_formatnumber(-1234.567,1,-2,-1)", "(1,234.6)"},
           {"jet_formatpercent(0.1234)", "12.34%"},
           {"jet_formatcurrency(-5)", "($5.00)"},
           {"jet_format(7,5)", "5"}});
}

TEST_F(FunctionsTest, FormatOfDatesAndTexts)
{
    check({{"jet_format(8,37623.7916666667,'Short Time')", "19:00"},
           {"jet_format(8,37623,'Long Date')", "Thursday, January 02, 2003"},
           {"jet_format(8,37623.2916666667,'Medium Time')", "07:00 AM"},
           {"jet_format(8,37623,'Medium Date')", "02-Jan-03"},
           {"jet_format(10,'3.9','dddd, yy mmm mm/d')", "Tuesday, 00 Jan 01/2"},
           {"jet_format(8,37623.5,'h:mm:ss a/p')", "12:00:00 p"},
           {"jet_format(8,37623,'q yyyy \"of\" ww')", "1 2003 of 1"},
           {"jet_format(8,37623.75,'hh:nn AM/PM mm')", "06:00 PM 01"},
           {"jet_format(10,'abc','>')", "ABC"},
           {"jet_format(10,'5551234','@@@-@@@@')", "555-1234"},
           {"jet_format(10,'ab','@@@@')", "  ab"},
           {"jet_format(10,'ab','!@@@@')", "ab  "},
           {"jet_format(10,'ab','&&&&')", "ab"},
           {"jet_format(10,'','@;\"empty\"')", "empty"},
           {"jet_format(10,NULL,'@;\"empty\"')", "empty"},
           {"jet_format(10,'abcdef','@@-@')", "abcde-f"},
           {"jet_formatdatetime(37623,2)", "1/2/2003"}});
}

TEST_F(FunctionsTest, NumbersAndMoney)
{
    check({{"jet_round(2.5)", "2.0"},
           {"jet_round(0.125,2)", "0.12"},
           {"jet_int(-2.5)", "-3.0"},
           {"jet_fix(-2.5)", "-2.0"},
           {"jet_int(7)", "7"},
           {"jet_sgn(-0.5)", "-1"},
           {"jet_partition(5,0,99,5)", "  5:  9"},
           {"jet_partition(100,0,99,5)", "100:   "},
           {"jet_round(jet_pmt(0.01,12,1000),4)", "-88.8488"},
           {"jet_round(jet_rate(12,-88.8488,1000),4)", "0.01"},
           {"jet_sln(1000,100,9)", "100.0"},
           {"jet_isnumeric(10,'-37.5e2')", "-1"},
           {"jet_isnumeric(8,1)", "0"},
           {"jet_isdate(10,'200')", "0"},
           {"jet_typename(3,1)", "Integer"}});
    checkFaults(5, {"jet_sqr(-1)", "jet_log(0)", "jet_round(1,-1)", "jet_partition(1,5,5,1)"});
    // Equal seeds give equal series.
    const std::string first = value("jet_rnd(-3)");
    EXPECT_NE(value("jet_rnd()"), first);
    EXPECT_EQ(value("jet_rnd(-3)"), first);
    EXPECT_EQ(value("jet_rnd(0)"), first);
}

TEST_F(FunctionsTest, AssignmentsConvertOrRefuse)
{
    check({{"jet_to_integer(2.5)", "2"},
           {"jet_to_long('1,025')", "1025"},
           {"jet_to_boolean(NULL)", "0"},
           {"jet_to_boolean('yes')", "-1"},
           {"jet_to_boolean(7)", "-1"},
           {"jet_to_single(0.1)", "0.100000001490116"},
           {"jet_to_date('1/2/2003')", "37623.0"},
           {"jet_to_date('2003-01-02')", "37623.0"},
           {"jet_to_byte(NULL)", "Null"},
           {"jet_as_number('5')", "5.0"},
           {"jet_as_number(5)", "5"},
           {"jet_as_text(1.5)", "1.5"},
           {"jet_as_text_date(37623)", "1/2/2003"},
           {"jet_alike('a%_','abc')", "1"},
           {"jet_alike('a*','abc')", "0"}});
    checkFaults(3349, {"jet_to_integer(40000)", "jet_to_byte(-1)", "jet_to_single(1e300)", "jet_to_date(1e9)"});
    checkFaults(3464, {"jet_to_long('abc')", "jet_as_number('x')", "jet_to_date('no date')"});
    checkFaults(94, {"jet_not_null(NULL)"});
}

TEST_F(FunctionsTest, Aggregates)
{
    checkFaults(3354, {"SELECT jet_single(x) FROM n"});
    check({{"SELECT jet_single(x) FROM n WHERE x = 9", "9"},
           {"SELECT jet_first(x, -rowid) FROM n", "Null"},
           {"SELECT jet_last(x, -rowid) FROM n", "2"}});
    check({{"SELECT jet_stdevp(x) FROM n", "2.0"},
           {"SELECT jet_varp(x) FROM n", "4.0"},
           {"SELECT round(jet_var(x),4) FROM n", "4.5714"},
           {"SELECT jet_stdev(x) FROM n WHERE x = 9", "Null"},
           {"SELECT jet_varp(x) FROM n WHERE x > 99", "Null"},
           {"SELECT jet_first(x) FROM n", "2"},
           {"SELECT jet_last(x) FROM n", "Null"},
           {"SELECT jet_first(x) FROM n WHERE x > 99", "Null"}});
}
