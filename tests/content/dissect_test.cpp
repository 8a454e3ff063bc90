#include "content/ContentExtractor.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

namespace {

tav::ContentSpec allColumns() {
    tav::ContentSpec spec;
    tav::ContentColumns& c = spec.columns;
    c.title = c.firstBytes = c.lastBytes = c.firstPlain = c.lastPlain = true;
    c.htmlTags = c.metaTags = c.www = c.mail = true;
    spec.options.BytF = spec.options.BytL = 60;
    spec.options.PBytF = spec.options.PBytL = 60;
    return spec;
}

// Feeds `text` in chunks of the given sizes (the last one repeats).
tav::ContentCells run(tav::ContentExtractor& x, const std::string& text, const std::vector<std::size_t>& sizes) {
    x.beginFile("f.html", -1);
    std::size_t pos = 0, k = 0;
    while (pos < text.size()) {
        const std::size_t n = std::min(sizes[std::min(k, sizes.size() - 1)], text.size() - pos);
        ++k;
        if (!x.feed(std::string_view(text).substr(pos, n))) break;
        pos += n;
    }
    x.finish();
    return x.cells();
}

tav::ContentCells runWhole(const tav::ContentSpec& spec, const std::string& text) {
    tav::ContentExtractor x(spec);
    return run(x, text, {text.size() + 1});
}

void expectSame(const tav::ContentCells& a, const tav::ContentCells& b, const std::string& where) {
    EXPECT_EQ(a.title, b.title) << where;
    EXPECT_EQ(a.firstBytes, b.firstBytes) << where;
    EXPECT_EQ(a.lastBytes, b.lastBytes) << where;
    EXPECT_EQ(a.firstPlain, b.firstPlain) << where;
    EXPECT_EQ(a.lastPlain, b.lastPlain) << where;
    EXPECT_EQ(a.htmlTags, b.htmlTags) << where;
    EXPECT_EQ(a.metaTags, b.metaTags) << where;
    EXPECT_EQ(a.wwwAddresses, b.wwwAddresses) << where;
    EXPECT_EQ(a.mailAddresses, b.mailAddresses) << where;
    EXPECT_EQ(a.spanCols, b.spanCols) << where;
    EXPECT_EQ(a.errors, b.errors) << where;
}

const std::string kPage =
    "<!DOCTYPE html>\r\n<HTML><head><title lang=\"en\">Caf&eacute; &amp; Bar</title>\n"
    "<meta name=\"description\" content=\"A page\">\n<Meta charset=utf-8>\n"
    "<style>p { color: red } a>b {}</style>\n"
    "<script type=\"text/javascript\">if (a < b && c > d) { x = \"<p>\"; }</SCRIPT>\n"
    "</head><body><!-- a comment holding <p> and <table> -->\n"
    "<p>Write to <a href=\"mailto:joe@example.com\">Joe</a> or bob.smith@mail.example.org.</p>\n"
    "<p>See http://www.example.com/index.html and WWW.Other.org/x, also https://a.b/c?d=e.</p>\n"
    "<% server code %><%= value %><% if a > b %> <div class=x>text</div></br></P><td>cell</td>\n"
    "<!--unfinished comment > still comment --> after &lt;</body></html>\n";

TEST(Dissect, FindsTagsMetaAndAddresses) {
    const tav::ContentCells c = runWhole(allColumns(), kPage);
    EXPECT_EQ(c.title, "Caf\xC3\xA9 & Bar");
    EXPECT_EQ(c.htmlTags,
              "HTML,HEAD,TITLE,/TITLE,META,STYLE,SCRIPT,/HEAD,BODY,P,A,DIV,/DIV,/BR,TD,/BODY,/HTML");
    EXPECT_EQ(c.metaTags, "meta name=\"description\" content=\"A page\",Meta charset=utf-8");
    EXPECT_EQ(c.mailAddresses, "joe@example.com,bob.smith@mail.example.org");
    EXPECT_EQ(c.wwwAddresses, "http://www.example.com/index.html,WWW.Other.org/x");
    EXPECT_TRUE(c.errors.empty());
}

TEST(Dissect, PlainTextLeavesOutScriptsStylesAndComments) {
    tav::ContentSpec spec = allColumns();
    spec.options.PBytF = 1000;
    const tav::ContentCells c = runWhole(spec, kPage);
    EXPECT_EQ(c.firstPlain.find("color"), std::string::npos);
    EXPECT_EQ(c.firstPlain.find("x = "), std::string::npos);
    EXPECT_EQ(c.firstPlain.find("comment"), std::string::npos);
    EXPECT_NE(c.firstPlain.find("Write to Joe or bob.smith@mail.example.org."), std::string::npos);
    EXPECT_NE(c.firstPlain.find("after &lt;"), std::string::npos);
}

TEST(Dissect, EndTagsCountUnderTheStartTagWhenIncluded) {
    tav::ContentSpec spec = allColumns();
    spec.options.IncEndTag = true;
    spec.options.LstSep = "|";
    const tav::ContentCells c = runWhole(spec, "<div><p>x</p></div><span></span></meta>");
    EXPECT_EQ(c.htmlTags, "DIV|P|SPAN|META");
    EXPECT_EQ(c.metaTags, "");
}

TEST(Dissect, CommonTagIsListedAtItsFirstMeetingOnly) {
    const tav::ContentCells c = runWhole(allColumns(), "</b><b><B></td><TD><br/>");
    EXPECT_EQ(c.htmlTags, "/B,/TD,BR/");
}

TEST(Dissect, TextWithoutTagsStillGivesAddresses) {
    const tav::ContentCells c =
        runWhole(allColumns(), "Mail me: ann@example.net.\nOr visit www.example.net.\r\nhttp://x.org\n");
    EXPECT_EQ(c.htmlTags, "");
    EXPECT_EQ(c.mailAddresses, "ann@example.net");
    EXPECT_EQ(c.wwwAddresses, "www.example.net.,http://x.org");
}

TEST(Dissect, ListStopsGrowingPastTheLimitButKeepsTheItemThatPassedIt) {
    tav::ContentSpec spec = allColumns();
    spec.options.LenLmt = 20;
    const tav::ContentCells c = runWhole(spec, "<alpha><beta><gamma><delta><epsilon>");
    // ALPHA (5+5) and BETA (4+5) make 19; GAMMA passes 20 and stays.
    EXPECT_EQ(c.htmlTags, "ALPHA,BETA,GAMMA");
}

TEST(Dissect, CandidateIsCutAfterTwoHundredBytes) {
    const std::string longUrl = "http://example.org/" + std::string(300, 'a');
    const tav::ContentCells c = runWhole(allColumns(), longUrl);
    EXPECT_EQ(c.wwwAddresses, longUrl.substr(0, 200));
}

// Any split of the input into chunks gives the same cells as the whole.
TEST(Dissect, EverySplitPointGivesTheSameCells) {
    tav::ContentSpec spec = allColumns();
    spec.columns.spanCols = {{27, "<div class=x>", "</div>", ""}, {28, "write to", "</a>", "caf"}};
    spec.skipList = tav::SkipList({{"s", "also", "e."}});
    const tav::ContentCells whole = runWhole(spec, kPage);
    EXPECT_EQ(whole.spanCols, (std::vector<std::string>{"text", " <a href=\"mailto:joe@example.com\">Joe"}));
    tav::ContentExtractor x(spec);  // one instance for all runs: it must reset itself
    for (std::size_t cut = 1; cut < kPage.size(); ++cut) {
        const tav::ContentCells split = run(x, kPage, {cut, kPage.size()});
        expectSame(whole, split, "cut at " + std::to_string(cut));
        if (HasFailure()) return;
    }
}

TEST(Dissect, RandomChunkSizesGiveTheSameCells) {
    const tav::ContentSpec spec = allColumns();
    std::mt19937 rng(12345);
    std::string text;
    const char* pieces[] = {"<p>", "</p>", "<a href=\"http://h.org/p\">", "x@y.org ", "www.w.org ", "<!-- c -->",
                            "<script>1<2</script>", "text ", "\r\n", "<meta a=b>", "<%x%>", "&amp;", "HTTP://Q.R "};
    for (int i = 0; i < 400; ++i) text += pieces[rng() % (sizeof pieces / sizeof pieces[0])];
    const tav::ContentCells whole = runWhole(spec, text);
    tav::ContentExtractor x(spec);
    for (int round = 0; round < 200; ++round) {
        std::vector<std::size_t> sizes;
        for (int k = 0; k < 64; ++k) sizes.push_back(1 + rng() % (round % 4 == 0 ? 3 : 40));
        expectSame(whole, run(x, text, sizes), "round " + std::to_string(round));
        if (HasFailure()) return;
    }
}

TEST(Dissect, ColumnsThatAreNotWantedStayEmpty) {
    tav::ContentSpec spec;
    spec.columns.mail = true;
    const tav::ContentCells c = runWhole(spec, kPage);
    EXPECT_EQ(c.htmlTags, "");
    EXPECT_EQ(c.title, "");
    EXPECT_EQ(c.wwwAddresses, "");
    EXPECT_EQ(c.mailAddresses, "joe@example.com,bob.smith@mail.example.org");
}

TEST(Dissect, OnlyWhatIsNeededIsRead) {
    tav::ContentSpec spec;
    spec.columns.title = spec.columns.firstBytes = true;
    spec.options.BytF = 10;
    tav::ContentExtractor x(spec);
    x.beginFile("f", -1);
    EXPECT_FALSE(x.feed("<title>T</title>" + std::string(20000, 'z')));
    x.finish();
    EXPECT_EQ(x.cells().title, "T");
    EXPECT_EQ(x.cells().firstBytes, "<title>T</");
}

TEST(Dissect, CopiesWorkOnTheirOwn) {
    std::vector<tav::ContentExtractor> perThread(3, tav::ContentExtractor(allColumns()));
    const tav::ContentCells expected = runWhole(allColumns(), kPage);
    for (tav::ContentExtractor& x : perThread) expectSame(expected, run(x, kPage, {7}), "copy");
}

TEST(Dissect, ScriptsAndServerBlocksAreGatheredWhenAsked) {
    tav::HtmlScanner scanner;
    tav::DissectOptions options;
    tav::HtmlScanner::Wants wants;
    wants.blocks = true;
    scanner.configure(options, wants, tav::EndChars(), tav::EndChars(), nullptr);
    scanner.beginFile();
    const std::string_view chunks[] = {"<!doctype x><script>a<b</scr", "ipt><% if a > b %><%=v%>"};
    EXPECT_TRUE(scanner.Dissect(chunks, 0));
    EXPECT_EQ(scanner.scriptText(), "a<b");
    EXPECT_EQ(scanner.serverText(), "% if a > b %=v%");
    EXPECT_EQ(scanner.otherTagText(), "!doctype x");
}

TEST(Dissect, PlainTextOfAWholeText) {
    EXPECT_EQ(tav::dissectPlainText("<p>One</p><script>two</script>three"), "Onethree");
    const tav::SkipList skip({{"nav", "[", "]"}});
    EXPECT_EQ(tav::dissectPlainText("a<b>[menu</b>more]c", &skip), "ac");
}

}  // namespace

namespace {

TEST(DissectMasks, EveryVectorLevelMarksTheSameBytes) {
    std::mt19937 rng(7);
    const char alphabet[] = "<>@:.wWhtpPa \n\xC3";
    std::string buffer(1 + 64 * 40, ' ');
    for (char& c : buffer) c = alphabet[rng() % (sizeof alphabet - 1)];
    const auto* s = reinterpret_cast<const unsigned char*>(buffer.data()) + 1;
    for (bool www : {false, true})
        for (bool mail : {false, true}) {
            std::vector<std::uint64_t> plain(40), other(40);
            ASSERT_TRUE(tav::scan_detail::eventMasks(0, s, 40, www, mail, plain.data()));
            // What the vector levels leave of the ':' and '.' marks.
            for (std::size_t i = 0; i < 64 * 40; ++i) {
                const unsigned char before = static_cast<unsigned char>(s[i - 1] | 0x20);
                if ((s[i] == ':' && before != 'p') || (s[i] == '.' && before != 'w'))
                    plain[i / 64] &= ~(std::uint64_t{1} << (i % 64));
            }
            for (int level = 1; level < tav::scan_detail::vectorLevels(); ++level) {
                if (!tav::scan_detail::eventMasks(level, s, 40, www, mail, other.data())) continue;
                EXPECT_EQ(plain, other) << "level " << level << " www " << www << " mail " << mail;
            }
        }
}

}  // namespace

namespace {

TEST(ContentColumns, ColTypesSelectColumnsAndCells) {
    tav::ContentSpec spec;
    spec.columns = tav::contentColumnsFor({1, 10, 23, 26, 27});
    EXPECT_TRUE(spec.columns.title && spec.columns.htmlTags && spec.columns.mail);
    EXPECT_FALSE(spec.columns.www || spec.columns.metaTags || spec.columns.firstBytes || spec.columns.lastPlain);
    tav::ContentExtractor x(spec);
    x.beginFile("f", -1);
    x.feed("<title>T</title>a@b.c");
    x.finish();
    ASSERT_NE(x.cells().forColType(10), nullptr);
    EXPECT_EQ(*x.cells().forColType(10), "T");
    EXPECT_EQ(*x.cells().forColType(23), "TITLE,/TITLE");
    EXPECT_EQ(*x.cells().forColType(26), "a@b.c");
    EXPECT_EQ(x.cells().forColType(3), nullptr);
}

}  // namespace
