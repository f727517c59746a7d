#include "toolkit/mod項目編集.h"

#include "recording_notice.h"

#include "test_text.h"

#include <gtest/gtest.h>

namespace {

// ---- 全角conv

TEST(全角conv, EmptyTextGivesEmptyText) {
    EXPECT_EQ(全角conv(QString()), QString());
    EXPECT_EQ(全角conv(q("")), QString());
}

TEST(全角conv, VoicedPairsBecomeOneCharacterEach) {
    EXPECT_EQ(全角conv(q("ｶﾞｷﾞ")), q("ガギ"));
    EXPECT_EQ(全角conv(q("ｶﾞｷﾞ")).size(), 2);
}

TEST(全角conv, SemiVoicedPair) {
    EXPECT_EQ(全角conv(q("ﾊﾟ")), q("パ"));
}

TEST(全角conv, VuFollowedBySmallA) {
    EXPECT_EQ(全角conv(q("ｳﾞｧ")), q("ヴァ"));
}

TEST(全角conv, LeadingVoicedMarkStaysHalfWidth) {
    EXPECT_EQ(全角conv(q("ﾞｱ")), QString(QChar(0xFF9E)) + q("ア"));
}

TEST(全角conv, LettersDigitsAndMinus) {
    EXPECT_EQ(全角conv(q("AB-1")), q("ＡＢ－１"));
}

TEST(全角conv, BlankStaysHalfWidthBlank) {
    EXPECT_EQ(全角conv(q(" ")), q(" "));
    EXPECT_NE(全角conv(q(" ")), QString(QChar(0x3000)));
}

TEST(全角conv, OwnResultUnchanged) {
    const QString once = 全角conv(q("ｶﾞｷﾞAb-1 ~\\'ｰｱｲｳﾜﾞ｡｢｣､･\"^`"));
    EXPECT_EQ(全角conv(once), once);
}

TEST(全角conv, ThreeSymbolsAreNotAPlainShift) {
    EXPECT_EQ(全角conv(q("'")), QString(QChar(0x2019)));
    EXPECT_EQ(全角conv(q("\\")), QString(QChar(0xFFE5)));
    EXPECT_EQ(全角conv(q("~")), QString(QChar(0xFF5E)));
}

TEST(全角conv, ProlongedSoundMarkBecomesFullWidthBeforePairs) {
    EXPECT_EQ(全角conv(q("ｰ")), QString(QChar(0x30FC)));
    EXPECT_EQ(全角conv(q("ｰﾞ")), QString(QChar(0x30FC)) + QChar(0xFF9E));
}

TEST(全角conv, EverySymbolOfTheTable) {
    EXPECT_EQ(全角conv(q("!#$%&'()=~|\\-+*[]@:;.,/?<>{}ｰ_")),
              q("！＃＄％＆’（）＝～｜￥－＋＊［］＠：；．，／？＜＞｛｝ー＿"));
}

TEST(全角conv, RangesOfLettersAndDigits) {
    EXPECT_EQ(全角conv(q("0123456789")), q("０１２３４５６７８９"));
    EXPECT_EQ(全角conv(q("ABCDEFGHIJKLMNOPQRSTUVWXYZ")), q("ＡＢＣＤＥＦＧＨＩＪＫＬＭＮＯＰＱＲＳＴＵＶＷＸＹＺ"));
    EXPECT_EQ(全角conv(q("abcdefghijklmnopqrstuvwxyz")), q("ａｂｃｄｅｆｇｈｉｊｋｌｍｎｏｐｑｒｓｔｕｖｗｘｙｚ"));
}

TEST(全角conv, AllTwentySixPairs) {
    EXPECT_EQ(全角conv(q("ｳﾞｶﾞｷﾞｸﾞｹﾞｺﾞｻﾞｼﾞｽﾞｾﾞｿﾞﾀﾞﾁﾞﾂﾞﾃﾞﾄﾞﾊﾞﾋﾞﾌﾞﾍﾞﾎﾞﾊﾟﾋﾟﾌﾟﾍﾟﾎﾟ")),
              q("ヴガギグゲゴザジズゼゾダヂヅデドバビブベボパピプペポ"));
}

TEST(全角conv, AllFiftyFiveSingleKana) {
    EXPECT_EQ(全角conv(q("ｱｲｳｴｵｶｷｸｹｺｻｼｽｾｿﾀﾁﾂﾃﾄﾅﾆﾇﾈﾉﾊﾋﾌﾍﾎﾏﾐﾑﾒﾓﾔﾕﾖﾗﾘﾙﾚﾛﾜｦﾝｧｨｩｪｫｯｬｭｮ")),
              q("アイウエオカキクケコサシスセソタチツテトナニヌネノハヒフヘホマミムメモヤユヨラリルレロワヲンァィゥェォッャュョ"));
}

TEST(全角conv, KanaWithoutAPairKeepsItsMark) {
    EXPECT_EQ(全角conv(q("ﾜﾞ")), q("ワ") + QChar(0xFF9E));
    EXPECT_EQ(全角conv(q("ｱﾟ")), q("ア") + QChar(0xFF9F));
}

TEST(全角conv, CharactersWithoutARulePassUnchanged) {
    const QString unchanged = q(" \"^`｡｢｣､･漢字ａあ");
    EXPECT_EQ(全角conv(unchanged), unchanged);
}

TEST(全角conv, ArgumentIsNotChanged) {
    const QString source = q("ｶﾞ1");
    const QString copy = source;
    全角conv(source);
    EXPECT_EQ(source, copy);
}

TEST(全角conv, TextBeyondSigned16BitCountComesBackUnchanged) {
    const QString longest(32767, QLatin1Char('a'));
    EXPECT_EQ(全角conv(longest), QString(32767, QChar(0xFF41)));
    const QString tooLong(32768, QLatin1Char('a'));
    EXPECT_EQ(全角conv(tooLong), tooLong);
}

// ---- 引用符conv

TEST(引用符conv, EmptyTextGivesEmptyText) {
    EXPECT_EQ(引用符conv(QString()), QString());
}

TEST(引用符conv, QuoteDoubledAndTrailingBlankGone) {
    EXPECT_EQ(引用符conv(q("O'Brien ")), q("O''Brien"));
}

TEST(引用符conv, TwoQuotesBecomeFour) {
    EXPECT_EQ(引用符conv(q("''")), q("''''"));
}

TEST(引用符conv, BlanksOnlyGiveEmptyText) {
    EXPECT_EQ(引用符conv(q("    ")), QString());
}

TEST(引用符conv, LeadingBlanksAndFullWidthBlankStay) {
    EXPECT_EQ(引用符conv(q("  山田\u3000 ")), q("  山田\u3000"));
}

// ---- 文字数chk

TEST(文字数chk, ExactlyTheLimitClearsTheNotice) {
    RecordingNotice notice;
    notice.お知らせset(q("1文字オーバーです。"));
    文字数chk(notice, q("あいう"), 6);
    EXPECT_EQ(notice.last(), QString());
    文字数chk(notice, q("abcd"), 4);
    EXPECT_EQ(notice.last(), QString());
}

TEST(文字数chk, HalfWidthKanaCountOneByteEach) {
    RecordingNotice notice;
    文字数chk(notice, q("ｱｲｳｴｵ"), 4);
    EXPECT_EQ(notice.last(), q("1文字オーバーです。"));
}

TEST(文字数chk, FullWidthKanaCountTwoBytesEach) {
    RecordingNotice notice;
    文字数chk(notice, q("アイウエオ"), 4);
    EXPECT_EQ(notice.last(), q("3文字オーバーです。"));
}

TEST(文字数chk, FullWidthCharacterStoppingOneByteOverMustGo) {
    RecordingNotice notice;
    文字数chk(notice, q("あいう"), 5);
    EXPECT_EQ(notice.last(), q("1文字オーバーです。"));
}

TEST(文字数chk, EmptyTextWithLimitZeroClears) {
    RecordingNotice notice;
    文字数chk(notice, QString(), 0);
    EXPECT_EQ(notice.last(), QString());
}

TEST(文字数chk, CharacterOutsideTheCodePageCountsOneByte) {
    RecordingNotice notice;
    // U+00E9 has no place in code page 932: one byte, its replacement.
    文字数chk(notice, q("ééé"), 3);
    EXPECT_EQ(notice.last(), QString());
    文字数chk(notice, q("éééé"), 3);
    EXPECT_EQ(notice.last(), q("1文字オーバーです。"));
}

TEST(文字数chk, TextIsNotChanged) {
    RecordingNotice notice;
    const QString text = q("アイウエオ");
    文字数chk(notice, text, 4);
    EXPECT_EQ(text, q("アイウエオ"));
}

TEST(文字数chk, NegativeLimitCountsEveryCharacterAndOneMore) {
    RecordingNotice notice;
    文字数chk(notice, q("ab"), -1);
    EXPECT_EQ(notice.last(), q("3文字オーバーです。"));
}

TEST(文字数chk, TextBeyondSigned16BitCountGetsItsNotice) {
    // Counts are held wide: the rule applies as it stands, no overflow.
    RecordingNotice notice;
    文字数chk(notice, QString(40000, QLatin1Char('a')), 32767);
    EXPECT_EQ(notice.last(), q("7233文字オーバーです。"));
    文字数chk(notice, QString(32767, QLatin1Char('a')), 32767);
    EXPECT_EQ(notice.last(), QString());
}

// ---- 文字数cut

TEST(文字数cut, FullWidthCharacterIsNeverSplit) {
    EXPECT_EQ(文字数cut(q("あいう"), 5), q("あい"));
}

TEST(文字数cut, LimitZeroGivesEmptyText) {
    EXPECT_EQ(文字数cut(q("a"), 0), QString());
    EXPECT_EQ(文字数cut(q("あいう"), 0), QString());
}

TEST(文字数cut, TextThatFitsComesBackWhole) {
    EXPECT_EQ(文字数cut(q("ｱｲｳｴ"), 4), q("ｱｲｳｴ"));
    EXPECT_EQ(文字数cut(q("ｱｲｳｴｵ"), 4), q("ｱｲｳｴ"));
}

TEST(文字数cut, FirstCharacterOverTheLimitGivesEmptyText) {
    EXPECT_EQ(文字数cut(q("あ"), 1), QString());
}

TEST(文字数cut, NegativeLimitGivesEmptyText) {
    EXPECT_EQ(文字数cut(q("abc"), -3), QString());
    EXPECT_EQ(文字数cut(QString(), -3), QString());
}

TEST(文字数cut, TextBeyondSigned16BitCountIsCutToTheLimit) {
    EXPECT_EQ(文字数cut(QString(40000, QLatin1Char('a')), 32767), QString(32767, QLatin1Char('a')));
    EXPECT_EQ(文字数cut(QString(40000, QChar(0x3042)), 32767), QString(16383, QChar(0x3042)));
}

// ---- コードfmt

TEST(コードfmt, EmptyValueStaysEmpty) {
    EXPECT_EQ(コードfmt(QString(), q("00000")), QString());
}

TEST(コードfmt, CodeWithLettersComesOutAsItStands) {
    EXPECT_EQ(コードfmt(q("A1"), q("00000")), q("A1"));
}

TEST(コードfmt, LongerNumberIsCutAtTheRight) {
    EXPECT_EQ(コードfmt(q("123456"), q("00000")), q("12345"));
}

TEST(コードfmt, NumberIsZeroPadded) {
    EXPECT_EQ(コードfmt(q("12"), q("00000")), q("00012"));
    EXPECT_EQ(コードfmt(q("7"), q("000")), q("007"));
}

TEST(コードfmt, EmptyMaskGivesTheValue) {
    EXPECT_EQ(コードfmt(q("12"), QString()), q("12"));
    EXPECT_EQ(コードfmt(q("abc"), QString()), q("abc"));
}

TEST(コードfmt, LongTextWithLettersIsCutToTheMask) {
    EXPECT_EQ(コードfmt(q("ABCDEFG"), q("00000")), q("ABCDE"));
}

TEST(コードfmt, FullWidthDigitsAndBlanksReadAsANumber) {
    EXPECT_EQ(コードfmt(q("１２"), q("00000")), q("00012"));
    EXPECT_EQ(コードfmt(q(" 12 "), q("00000")), q("00012"));
}

TEST(コードfmt, FractionRoundsHalfAwayFromZero) {
    EXPECT_EQ(コードfmt(q("12.5"), q("00000")), q("00013"));
    EXPECT_EQ(コードfmt(q("12.4"), q("00000")), q("00012"));
    EXPECT_EQ(コードfmt(q("99999.5"), q("00000")), q("10000"));
}

TEST(コードfmt, NegativeNumberKeepsItsSign) {
    EXPECT_EQ(コードfmt(q("-3"), q("00000")), q("-0000"));
    EXPECT_EQ(コードfmt(q("-3"), q("00")), q("-0"));
}

// ---- runs and ranges

TEST(列make, RunsOfTheCount) {
    EXPECT_EQ(ゼロ列make(3), q("000"));
    EXPECT_EQ(九列make(5), q("99999"));
    EXPECT_EQ(Z列make(2), q("ZZ"));
}

TEST(列make, ZeroOrLessGivesEmptyText) {
    EXPECT_EQ(ゼロ列make(0), QString());
    EXPECT_EQ(九列make(-1), QString());
    EXPECT_EQ(Z列make(-32768), QString());
}

TEST(列make, LargestCount) {
    EXPECT_EQ(ゼロ列make(32767).size(), 32767);
    EXPECT_EQ(ゼロ列make(32767).count(QLatin1Char('0')), 32767);
}

TEST(範囲make, FiveCharacterCode) {
    EXPECT_EQ(範囲下限make(q("00123")), q("00000"));
    EXPECT_EQ(範囲上限make(q("00123"), 5), q("99999"));
}

TEST(範囲make, EmptyLowerEndStaysEmpty) {
    EXPECT_EQ(範囲下限make(QString()), QString());
}

TEST(範囲make, EmptyUpperEndBecomesZOfTheFallback) {
    EXPECT_EQ(範囲上限make(QString(), 5), q("ZZZZZ"));
}

TEST(範囲make, CodeBeyondSigned16BitCountGivesNoBound) {
    const QString tooLong(32768, QLatin1Char('1'));
    EXPECT_EQ(範囲下限make(tooLong), QString());
    EXPECT_EQ(範囲上限make(tooLong, 5), QString());
    EXPECT_EQ(範囲上限make(QString(32767, QLatin1Char('1')), 5), QString(32767, QLatin1Char('9')));
}

// ---- コード次make

TEST(コード次make, NineStepsToA) {
    EXPECT_EQ(コード次make(q("00009")), q("0000A"));
}

TEST(コード次make, ZGrowsByZero) {
    EXPECT_EQ(コード次make(q("0000Z")), q("0000Z0"));
    EXPECT_EQ(コード次make(q("0000Z")).size(), 6);
}

TEST(コード次make, YStepsToZ) {
    EXPECT_EQ(コード次make(q("000Y")), q("000Z"));
}

TEST(コード次make, SmallLetterGrowsByZero) {
    EXPECT_EQ(コード次make(q("abc")), q("abc0"));
}

TEST(コード次make, EmptyCodeGivesZero) {
    EXPECT_EQ(コード次make(QString()), q("0"));
}

TEST(コード次make, NoCarryIntoTheCharacterBefore) {
    EXPECT_EQ(コード次make(q("19")), q("1A"));
    EXPECT_EQ(コード次make(q("00018")), q("00019"));
}

TEST(コード次make, SymbolGrowsByZero) {
    EXPECT_EQ(コード次make(q("12-")), q("12-0"));
}

// ---- filters

TEST(数字抽出conv, KeepsAsciiAndFullWidthDigitsInOrder) {
    EXPECT_EQ(数字抽出conv(q("03-1234-５６７８")), q("031234５６７８"));
}

TEST(数字抽出conv, SignsPointsAndSeparatorsAreDropped) {
    EXPECT_EQ(数字抽出conv(q("+1.5,6 (7)")), q("1567"));
    EXPECT_EQ(数字抽出conv(q("abc")), QString());
}

TEST(パーセント除去conv, DropsEveryPercent) {
    EXPECT_EQ(パーセント除去conv(q("%山%田%")), q("山田"));
    EXPECT_EQ(パーセント除去conv(q("％")), q("％"));
}

} // namespace
