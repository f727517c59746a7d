// Properties over many generated texts, with fixed seeds so that a failure
// can be repeated.
#include "toolkit/mod項目編集.h"

#include "recording_notice.h"

#include "test_text.h"

#include <gtest/gtest.h>

#include <random>

namespace {

// Texts drawn from ASCII, half-width kana (marks and punctuation included)
// and full-width text.
class TextMaker {
public:
    explicit TextMaker(unsigned seed) : random_(seed) {}

    QString make(int longest) {
        const int length = pick(0, longest);
        QString text;
        for (int i = 0; i < length; ++i) {
            switch (pick(0, 2)) {
            case 0: text += QChar(static_cast<char16_t>(pick(0x20, 0x7E))); break;
            case 1: text += QChar(static_cast<char16_t>(pick(0xFF61, 0xFF9F))); break;
            default: text += kFullWidth.at(pick(0, static_cast<int>(kFullWidth.size()) - 1)); break;
            }
        }
        return text;
    }

    int pick(int low, int high) { return std::uniform_int_distribution<int>(low, high)(random_); }

private:
    const QString kFullWidth = QStringLiteral("あいうアイウガパヴー漢字山田　！ＡＺａｚ０９＿～’￥");
    std::mt19937 random_;
};

TEST(全角conv性質, IdempotentOnItsOwnResult) {
    TextMaker maker(20240501);
    for (int i = 0; i < 5000; ++i) {
        const QString source = maker.make(40);
        const QString once = 全角conv(source);
        ASSERT_EQ(全角conv(once), once) << "source: " << source.toStdString();
        ASSERT_LE(once.size(), source.size());
    }
}

TEST(全角conv性質, LeavesNoConvertibleHalfWidthCharacter) {
    TextMaker maker(7);
    for (int i = 0; i < 3000; ++i) {
        const QString result = 全角conv(maker.make(40));
        for (QChar c : result) {
            const char16_t u = c.unicode();
            const bool asciiLeft = u >= 0x21 && u <= 0x7E && u != u'"' && u != u'^' && u != u'`';
            const bool kanaLeft = u >= 0xFF66 && u <= 0xFF9D;
            ASSERT_FALSE(asciiLeft || kanaLeft) << "left in: " << result.toStdString();
        }
    }
}

TEST(文字数cut性質, ResultIsALeadingPartThatPassesTheCheckSilently) {
    TextMaker maker(4242);
    for (int i = 0; i < 4000; ++i) {
        const QString text = maker.make(30);
        const short limit = static_cast<short>(maker.pick(0, 40));
        const QString cut = 文字数cut(text, limit);
        ASSERT_TRUE(text.startsWith(cut));

        RecordingNotice notice;
        notice.お知らせset(QStringLiteral("1文字オーバーです。"));
        文字数chk(notice, cut, limit);
        ASSERT_EQ(notice.last(), QString()) << "text: " << text.toStdString() << " limit " << limit;

        // The longest part that fits: one more character would be over.
        if (cut.size() < text.size()) {
            文字数chk(notice, text.left(cut.size() + 1), limit);
            ASSERT_EQ(notice.last(), QStringLiteral("1文字オーバーです。"))
                << "text: " << text.toStdString() << " limit " << limit;
        } else {
            ASSERT_EQ(cut, text);
        }
    }
}

TEST(文字数chk性質, NoticeCountsTheCharactersToDrop) {
    TextMaker maker(99);
    for (int i = 0; i < 3000; ++i) {
        const QString text = maker.make(30);
        const short limit = static_cast<short>(maker.pick(0, 40));
        RecordingNotice notice;
        文字数chk(notice, text, limit);
        const qsizetype kept = 文字数cut(text, limit).size();
        const QString expected =
            kept == text.size() ? QString() : QString::number(text.size() - kept) + QStringLiteral("文字オーバーです。");
        ASSERT_EQ(notice.last(), expected) << "text: " << text.toStdString() << " limit " << limit;
    }
}

const QString kSteps = QStringLiteral("0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ");

TEST(コード次make性質, StepsThroughDigitsThenCapitalsThenGrows) {
    QString code = QStringLiteral("10");
    for (int step = 1; step < kSteps.size(); ++step) {
        code = コード次make(code);
        ASSERT_EQ(code, QStringLiteral("1") + kSteps.at(step));
    }
    EXPECT_EQ(コード次make(code), QStringLiteral("1Z0"));
    EXPECT_EQ(コード次make(コード次make(code)), QStringLiteral("1Z1"));
}

TEST(コード次make性質, NextOfNextIsConsistentWithTheStepping) {
    std::mt19937 random(31337);
    for (int i = 0; i < 4000; ++i) {
        QString code;
        const int length = std::uniform_int_distribution<int>(0, 6)(random);
        for (int k = 0; k < length; ++k)
            code += kSteps.at(std::uniform_int_distribution<int>(0, 35)(random));
        const QString once = コード次make(code);
        const QString twice = コード次make(once);

        // Each step either moves the last character one place on, or, at Z
        // or at an empty code, appends "0"; the characters before never change.
        for (const auto& [from, to] : {std::pair{code, once}, std::pair{once, twice}}) {
            if (from.isEmpty()) {
                ASSERT_EQ(to, QStringLiteral("0"));
            } else if (from.back() == QLatin1Char('Z')) {
                ASSERT_EQ(to, from + QLatin1Char('0'));
            } else {
                ASSERT_EQ(to.size(), from.size());
                ASSERT_EQ(to.left(to.size() - 1), from.left(from.size() - 1));
                ASSERT_EQ(kSteps.indexOf(to.back()), kSteps.indexOf(from.back()) + 1) << from.toStdString();
            }
        }
    }
}

} // namespace
