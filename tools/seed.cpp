#include "tools/seed.h"

#include "tools/rows.h"

#include <QStringList>

#include <algorithm>
#include <cstdint>
#include <iterator>

namespace setup {

namespace {

struct Pair {
    const char* key;
    const char* name;
};

bool insertPairs(RowWriter& writer, const QString& table, const QString& keyColumn, std::initializer_list<Pair> rows,
                 const Values& extra = {}) {
    for (const Pair& row : rows) {
        Values values{{keyColumn, QString::fromUtf8(row.key)}, {QStringLiteral("名称"), QString::fromUtf8(row.name)}};
        values += extra;
        if (!writer.insert(table, values))
            return false;
    }
    return true;
}

// Where an office stands: postcode, the two address lines as the postcode
// master has them, and the area code of its telephones.
struct Place {
    const char* postcode;
    const char* addressA;
    const char* addressB;
    const char* areaCode;
};

struct Office {
    const char* code;
    const char* name;
    Place place;
    const char* street;
};

const Office kHeadOffice{"000", "本社", {"100-0005", "東京都千代田区", "丸の内", "03"}, "二丁目4番1号"};

const Office kSeedBranches[] = {
    {"001", "大阪支店", {"530-0001", "大阪府大阪市北区", "梅田", "06"}, "三丁目1番3号"},
    {"002", "名古屋支店", {"450-0002", "愛知県名古屋市中村区", "名駅", "052"}, "四丁目7番1号"},
};

const Office kDemoBranches[] = {
    {"003", "福岡営業所", {"810-0001", "福岡県福岡市中央区", "天神", "092"}, "一丁目11番17号"},
    {"004", "札幌営業所", {"060-0042", "北海道札幌市中央区", "大通西", "011"}, "三丁目7番"},
    {"005", "仙台営業所", {"980-0811", "宮城県仙台市青葉区", "一番町", "022"}, "四丁目6番1号"},
};

bool insertOffice(RowWriter& writer, const Office& office, const QString& phoneNumber) {
    return writer.insert(
        QStringLiteral("M事業所"),
        {{QStringLiteral("コード"), QString::fromUtf8(office.code)},
         {QStringLiteral("名称"), QString::fromUtf8(office.name)},
         {QStringLiteral("郵便番号"), QString::fromUtf8(office.place.postcode)},
         {QStringLiteral("住所A"), QString::fromUtf8(office.place.addressA)},
         {QStringLiteral("住所B"), QString::fromUtf8(office.place.addressB) + QString::fromUtf8(office.street)},
         {QStringLiteral("電話"), phoneNumber},
         {QStringLiteral("暗証番号有無"), QStringLiteral("0")},
         {QStringLiteral("更新実行区分"), QStringLiteral("0")},
         {QStringLiteral("登録日付"), QStringLiteral("20240401 090000")}});
}

QString officePhone(const Office& office, int n) {
    const QString area = QString::fromUtf8(office.place.areaCode);
    // Area code and exchange make six digits, the line four more.
    return area + QLatin1Char('-') + QString::number(5000 + n * 11).left(6 - int(area.size())) + QLatin1Char('-') +
           QString::number(1000 + n * 100);
}

// The same sequence on every run.
class Sequence {
public:
    explicit Sequence(std::uint64_t seed) : state_(seed) {}
    int next(int bound) {
        state_ = state_ * 6364136223846793005ULL + 1442695040888963407ULL;
        return int((state_ >> 33) % std::uint64_t(bound));
    }

private:
    std::uint64_t state_;
};

struct Name {
    const char* kanji;
    const char* kana;
};

const Name kFamilyNames[] = {
    {"佐藤", "ｻﾄｳ"},   {"鈴木", "ｽｽﾞｷ"},  {"高橋", "ﾀｶﾊｼ"},  {"田中", "ﾀﾅｶ"},  {"伊藤", "ｲﾄｳ"},  {"渡辺", "ﾜﾀﾅﾍﾞ"},
    {"山本", "ﾔﾏﾓﾄ"},  {"中村", "ﾅｶﾑﾗ"},  {"小林", "ｺﾊﾞﾔｼ"}, {"加藤", "ｶﾄｳ"},  {"吉田", "ﾖｼﾀﾞ"}, {"山田", "ﾔﾏﾀﾞ"},
    {"佐々木", "ｻｻｷ"}, {"山口", "ﾔﾏｸﾞﾁ"}, {"松本", "ﾏﾂﾓﾄ"},  {"井上", "ｲﾉｳｴ"}, {"木村", "ｷﾑﾗ"},  {"林", "ﾊﾔｼ"},
    {"斎藤", "ｻｲﾄｳ"},  {"清水", "ｼﾐｽﾞ"},  {"山崎", "ﾔﾏｻﾞｷ"}, {"森", "ﾓﾘ"},     {"池田", "ｲｹﾀﾞ"}, {"橋本", "ﾊｼﾓﾄ"},
    {"阿部", "ｱﾍﾞ"},   {"石川", "ｲｼｶﾜ"},  {"前田", "ﾏｴﾀﾞ"},  {"藤田", "ﾌｼﾞﾀ"}, {"小川", "ｵｶﾞﾜ"}, {"岡田", "ｵｶﾀﾞ"},
};

const Name kMenNames[] = {
    {"太郎", "ﾀﾛｳ"}, {"健太", "ｹﾝﾀ"},  {"大輔", "ﾀﾞｲｽｹ"}, {"翔太", "ｼｮｳﾀ"}, {"拓也", "ﾀｸﾔ"},  {"直樹", "ﾅｵｷ"},
    {"誠", "ﾏｺﾄ"},   {"浩二", "ｺｳｼﾞ"}, {"隆", "ﾀｶｼ"},     {"健一", "ｹﾝｲﾁ"}, {"和也", "ｶｽﾞﾔ"}, {"亮", "ﾘｮｳ"},
    {"修", "ｵｻﾑ"},   {"剛", "ﾂﾖｼ"},    {"雄一", "ﾕｳｲﾁ"},  {"智也", "ﾄﾓﾔ"},
};

const Name kWomenNames[] = {
    {"花子", "ﾊﾅｺ"}, {"陽子", "ﾖｳｺ"}, {"美穂", "ﾐﾎ"},  {"由美", "ﾕﾐ"},    {"恵子", "ｹｲｺ"}, {"真由美", "ﾏﾕﾐ"},
    {"裕子", "ﾕｳｺ"}, {"彩", "ｱﾔ"},    {"舞", "ﾏｲ"},    {"愛", "ｱｲ"},      {"千尋", "ﾁﾋﾛ"}, {"香織", "ｶｵﾘ"},
    {"麻衣", "ﾏｲ"},  {"直美", "ﾅｵﾐ"}, {"智子", "ﾄﾓｺ"}, {"久美子", "ｸﾐｺ"},
};

// Department, its sections, and the duties people there have.
struct Unit {
    const char* department;
    const char* sections[2];
    const char* duties;
};

const Unit kUnits[] = {
    {"001", {"001", "001"}, "総務全般"}, {"002", {"002", "002"}, "経理・出納"},
    {"003", {"003", "004"}, "法人営業"}, {"003", {"003", "004"}, "ルート営業"},
    {"003", {"004", "003"}, "営業事務"}, {"004", {"005", "006"}, "システム開発"},
    {"004", {"006", "005"}, "品質管理"}, {"005", {"007", "007"}, "採用・労務"},
};

constexpr int kStaffCount = 100;
// Employees hired by the personnel system and not yet registered as staff.
constexpr int kNewHires = 6;

QString code5(int n) { return QStringLiteral("%1").arg(n, 5, 10, QLatin1Char('0')); }

QString date(int year, int month, int day) {
    return QStringLiteral("%1%2%3")
        .arg(year, 4, 10, QLatin1Char('0'))
        .arg(month, 2, 10, QLatin1Char('0'))
        .arg(day, 2, 10, QLatin1Char('0'));
}

QString digitsOf(const QString& phone) {
    QString digits;
    for (const QChar c : phone) {
        if (c.isDigit())
            digits.append(c);
    }
    return digits;
}

// One staff member of the demo company, also an employee when employeeCode is set.
struct Person {
    Values staff;
    Values employee;
    bool woman = false;
    QString givenName, givenKana;
    QString code, employeeCode, name, kana, postcode, addressA, addressB, addressC, phone, mobile;
    QString office, department, section, position, duties, staffClass, workForm, entry, leaving, status;
};

Person makePerson(int i, Sequence& random) {
    Person p;
    p.code = code5(i);
    const bool woman = random.next(100) < 40;
    p.woman = woman;
    const Name& family = kFamilyNames[random.next(int(std::size(kFamilyNames)))];
    const Name& given = woman ? kWomenNames[random.next(int(std::size(kWomenNames)))]
                              : kMenNames[random.next(int(std::size(kMenNames)))];
    const QString familyName = QString::fromUtf8(family.kanji);
    const QString givenName = QString::fromUtf8(given.kanji);
    p.givenName = givenName;
    p.givenKana = QString::fromUtf8(given.kana);
    p.name = familyName + QLatin1Char(' ') + givenName;
    p.kana = QString::fromUtf8(family.kana) + QLatin1Char(' ') + QString::fromUtf8(given.kana);

    // The directors are older than the rest.
    const int birthYear = i <= 3 ? 1955 + random.next(10) : 1962 + random.next(38);
    const int birthMonth = 1 + random.next(12);
    const int birthDay = 1 + random.next(28);
    const QString birth = date(birthYear, birthMonth, birthDay);
    const int entryYear = std::min(2024, birthYear + 22 + random.next(15));
    p.entry = random.next(4) == 0 ? date(entryYear, 1 + random.next(12), 1) : date(entryYear, 4, 1);

    const int where = random.next(100);
    const Office& office = i <= 3 || where < 45 ? kHeadOffice
                           : where < 65         ? kSeedBranches[0]
                           : where < 80         ? kSeedBranches[1]
                                                : kDemoBranches[random.next(int(std::size(kDemoBranches)))];
    p.office = QString::fromUtf8(office.code);
    const Unit& unit = kUnits[random.next(int(std::size(kUnits)))];
    p.department = QString::fromUtf8(unit.department);
    p.section = QString::fromUtf8(unit.sections[random.next(2)]);
    p.duties = QString::fromUtf8(unit.duties);

    if (i == 1) {
        p.position = QStringLiteral("01");
        p.duties = QStringLiteral("経営全般");
    } else if (i <= 3) {
        p.position = QStringLiteral("02");
    } else {
        static const char* const positions[] = {"03", "04", "05", "05", "06", "06", "07", "07", "08", "08", "08", "08"};
        p.position = QString::fromUtf8(positions[random.next(int(std::size(positions)))]);
    }
    if (i <= 3) {
        p.staffClass = QStringLiteral("0");
    } else {
        const int kind = random.next(100);
        p.staffClass = kind < 78   ? QStringLiteral("1")
                       : kind < 86 ? QStringLiteral("2")
                       : kind < 92 ? QStringLiteral("3")
                       : kind < 96 ? QStringLiteral("4")
                                   : QStringLiteral("5");
    }
    p.workForm = p.staffClass == QStringLiteral("3") || p.staffClass == QStringLiteral("4") ? QStringLiteral("002")
                                                                                            : QStringLiteral("001");
    p.status = QStringLiteral("0");
    if (i % 17 == 0) {
        p.status = QStringLiteral("2");
        p.leaving = date(std::max(entryYear + 1, 2020 + random.next(5)), 3, 31);
    } else if (i % 23 == 0) {
        p.status = QStringLiteral("1");
    }

    p.postcode = QString::fromUtf8(office.place.postcode);
    p.addressA = QString::fromUtf8(office.place.addressA);
    p.addressB = QString::fromUtf8(office.place.addressB);
    p.addressC = QStringLiteral("%1-%2-%3").arg(1 + random.next(5)).arg(1 + random.next(20)).arg(1 + random.next(30));
    if (random.next(3) == 0)
        p.addressC +=
            QStringLiteral(" ハイツ%1 %2号室").arg(QString::fromUtf8(family.kanji)).arg(101 + random.next(5) * 100);
    const QString area = QString::fromUtf8(office.place.areaCode);
    p.phone = area + QLatin1Char('-') + QString::number(3000 + random.next(6000)).left(6 - int(area.size())) +
              QLatin1Char('-') + QString::number(1000 + i * 37);
    p.mobile = QStringLiteral("090-%1-%2").arg(1000 + random.next(9000)).arg(2000 + i * 53);
    // Two staff in three are employees of the personnel system; the new hires all are.
    p.employeeCode = i % 3 == 0 && i <= kStaffCount ? QString() : code5(10000 + i);

    const QString registered = p.entry + QStringLiteral(" 090000");
    p.staff = {
        {QStringLiteral("コード"), p.code},
        {QStringLiteral("姓"), familyName},
        {QStringLiteral("名"), givenName},
        {QStringLiteral("氏名"), p.name},
        {QStringLiteral("カナ姓"), QString::fromUtf8(family.kana)},
        {QStringLiteral("カナ名"), QString::fromUtf8(given.kana)},
        {QStringLiteral("カナ"), p.kana},
        {QStringLiteral("性別区分"), woman ? QStringLiteral("2") : QStringLiteral("1")},
        {QStringLiteral("生年月日"), birth},
        {QStringLiteral("郵便番号"), p.postcode},
        {QStringLiteral("住所A"), p.addressA},
        {QStringLiteral("住所B"), p.addressB},
        {QStringLiteral("住所C"), p.addressC},
        {QStringLiteral("電話"), p.phone},
        {QStringLiteral("携帯電話"), p.mobile},
        {QStringLiteral("職責"), p.duties},
        {QStringLiteral("EMAIL"), QStringLiteral("s%1@sakura-shoji.example").arg(p.code)},
        {QStringLiteral("事業所コード"), p.office},
        {QStringLiteral("部門コード"), p.department},
        {QStringLiteral("セクションコード"), p.section},
        {QStringLiteral("役職コード"), p.position},
        {QStringLiteral("ログインID"), QStringLiteral("u") + p.code},
        {QStringLiteral("在籍区分"), p.status},
        {QStringLiteral("社員区分"), p.staffClass},
        {QStringLiteral("入社日付"), p.entry},
        {QStringLiteral("退社日付"), p.leaving},
        {QStringLiteral("電話番号"), digitsOf(p.phone)},
        {QStringLiteral("携帯電話番号"), digitsOf(p.mobile)},
        {QStringLiteral("社員コード"), p.employeeCode},
        {QStringLiteral("アクセス権限"), QStringLiteral("0")},
        {QStringLiteral("ユーザID"), QStringLiteral("setup")},
        {QStringLiteral("登録日付"), registered},
    };
    for (int k = 0; k <= 9; ++k)
        p.staff.append({QStringLiteral("処理分類%1操作許可").arg(k), QStringLiteral("0")});
    // Part-time and temporary staff may look but not delete.
    if (p.staffClass == QStringLiteral("4") || p.staffClass == QStringLiteral("5"))
        p.staff.append({QStringLiteral("削除許可"), QStringLiteral("1")});

    if (!p.employeeCode.isEmpty()) {
        p.employee = {
            {QStringLiteral("コード"), p.employeeCode},
            {QStringLiteral("姓"), familyName},
            {QStringLiteral("名"), givenName},
            {QStringLiteral("氏名"), p.name},
            {QStringLiteral("カナ姓"), QString::fromUtf8(family.kana)},
            {QStringLiteral("カナ名"), QString::fromUtf8(given.kana)},
            {QStringLiteral("カナ"), p.kana},
            {QStringLiteral("性別区分"), woman ? QStringLiteral("2") : QStringLiteral("1")},
            {QStringLiteral("生年月日"), birth},
            {QStringLiteral("郵便番号"), p.postcode},
            {QStringLiteral("住所A"), p.addressA},
            {QStringLiteral("住所B"), p.addressB},
            {QStringLiteral("住所C"), p.addressC},
            {QStringLiteral("電話"), p.phone},
            {QStringLiteral("携帯電話"), p.mobile},
            {QStringLiteral("EMAIL"), QStringLiteral("s%1@sakura-shoji.example").arg(p.code)},
            {QStringLiteral("事業所コード"), p.office},
            {QStringLiteral("部門コード"), p.department},
            {QStringLiteral("セクションコード"), p.section},
            {QStringLiteral("役職コード"), p.position},
            {QStringLiteral("職責"), p.duties},
            {QStringLiteral("就業形態コード"), p.workForm},
            {QStringLiteral("社員区分"), p.staffClass},
            {QStringLiteral("在籍区分"), p.status},
            {QStringLiteral("入社日付"), p.entry},
            {QStringLiteral("退社日付"), p.leaving},
            {QStringLiteral("ユーザID"), QStringLiteral("setup")},
            {QStringLiteral("登録日付"), registered},
        };
    }
    return p;
}

// The personnel history of one employee: hiring, a transfer, leave, retirement.
bool insertHistory(RowWriter& writer, Person& p, int i) {
    const QString hireNo = QStringLiteral("%1").arg(i, 8, 10, QLatin1Char('0'));
    if (i % 4 == 1) {
        // Hired into the head office's general pool before the present post.
        p.employee += {{QStringLiteral("採用事業所コード"), QStringLiteral("000")},
                       {QStringLiteral("採用番号基準日付"), QStringLiteral("99999999")},
                       {QStringLiteral("採用No"), hireNo}};
        if (!writer.insert(QStringLiteral("T採用"), {{QStringLiteral("事業所コード"), QStringLiteral("000")},
                                                     {QStringLiteral("番号基準日付"), QStringLiteral("99999999")},
                                                     {QStringLiteral("採用No"), hireNo},
                                                     {QStringLiteral("社員コード"), p.employeeCode},
                                                     {QStringLiteral("採用日付"), p.entry},
                                                     {QStringLiteral("氏名"), p.name},
                                                     {QStringLiteral("カナ氏名"), p.kana},
                                                     {QStringLiteral("採用事業所コード"), QStringLiteral("000")},
                                                     {QStringLiteral("採用部門コード"), QStringLiteral("001")},
                                                     {QStringLiteral("採用セクションコード"), QStringLiteral("001")},
                                                     {QStringLiteral("採用就業形態コード"), p.workForm},
                                                     {QStringLiteral("採用社員区分"), p.staffClass},
                                                     {QStringLiteral("採用役職コード"), QStringLiteral("08")},
                                                     {QStringLiteral("採用職責"), QStringLiteral("新任研修")}}))
            return false;
    }
    if (i % 5 == 2) {
        // Moved from the head office's general affairs to the present post.
        if (!writer.insert(QStringLiteral("T異動"), {{QStringLiteral("社員コード"), p.employeeCode},
                                                     {QStringLiteral("異動日付"), QStringLiteral("20230401")},
                                                     {QStringLiteral("異動No"), QStringLiteral("001")},
                                                     {QStringLiteral("異動事業所コード"), p.office},
                                                     {QStringLiteral("異動部門コード"), p.department},
                                                     {QStringLiteral("異動セクションコード"), p.section},
                                                     {QStringLiteral("異動役職コード"), p.position},
                                                     {QStringLiteral("異動職責"), p.duties},
                                                     {QStringLiteral("異動就業形態コード"), p.workForm},
                                                     {QStringLiteral("異動社員区分"), p.staffClass},
                                                     {QStringLiteral("前事業所コード"), QStringLiteral("000")},
                                                     {QStringLiteral("前部門コード"), QStringLiteral("001")},
                                                     {QStringLiteral("前セクションコード"), QStringLiteral("001")},
                                                     {QStringLiteral("前役職コード"), QStringLiteral("08")},
                                                     {QStringLiteral("前職責"), QStringLiteral("総務全般")},
                                                     {QStringLiteral("前就業形態コード"), QStringLiteral("001")},
                                                     {QStringLiteral("前社員区分"), QStringLiteral("1")}}))
            return false;
    }
    if (i % 29 == 7) {
        // A transfer already decided for the far future.
        if (!writer.insert(QStringLiteral("T異動"), {{QStringLiteral("社員コード"), p.employeeCode},
                                                     {QStringLiteral("異動日付"), QStringLiteral("20990401")},
                                                     {QStringLiteral("異動No"), QStringLiteral("001")},
                                                     {QStringLiteral("異動事業所コード"), QStringLiteral("001")},
                                                     {QStringLiteral("異動部門コード"), QStringLiteral("003")},
                                                     {QStringLiteral("異動セクションコード"), QStringLiteral("003")},
                                                     {QStringLiteral("異動役職コード"), QStringLiteral("05")},
                                                     {QStringLiteral("異動職責"), QStringLiteral("法人営業")},
                                                     {QStringLiteral("異動就業形態コード"), QStringLiteral("001")},
                                                     {QStringLiteral("異動社員区分"), QStringLiteral("1")},
                                                     {QStringLiteral("前事業所コード"), p.office},
                                                     {QStringLiteral("前部門コード"), p.department},
                                                     {QStringLiteral("前セクションコード"), p.section},
                                                     {QStringLiteral("前役職コード"), p.position},
                                                     {QStringLiteral("前職責"), p.duties},
                                                     {QStringLiteral("前就業形態コード"), p.workForm},
                                                     {QStringLiteral("前社員区分"), p.staffClass}}))
            return false;
    }
    if (p.status == QStringLiteral("1") &&
        !writer.insert(QStringLiteral("T休職"), {{QStringLiteral("社員コード"), p.employeeCode},
                                                 {QStringLiteral("休職開始日付"), QStringLiteral("20240401")},
                                                 {QStringLiteral("休職終了日付"), QStringLiteral("20991231")}}))
        return false;
    if (i % 10 == 4 &&
        !writer.insert(QStringLiteral("T休職"), {{QStringLiteral("社員コード"), p.employeeCode},
                                                 {QStringLiteral("休職開始日付"), QStringLiteral("20190401")},
                                                 {QStringLiteral("休職終了日付"), QStringLiteral("20190930")}}))
        return false;
    if (p.status == QStringLiteral("2") &&
        !writer.insert(QStringLiteral("T退職"),
                       {{QStringLiteral("社員コード"), p.employeeCode}, {QStringLiteral("退職日付"), p.leaving}}))
        return false;
    return true;
}

bool insertDirectory(RowWriter& writer, const Person& p, const QString& phone) {
    return writer.insert(QStringLiteral("M電話番号"),
                         {{QStringLiteral("電話"), phone},
                          {QStringLiteral("名称"), p.name},
                          {QStringLiteral("郵便番号"), p.postcode},
                          {QStringLiteral("住所A"), p.addressA},
                          {QStringLiteral("住所B"), p.addressB},
                          {QStringLiteral("住所C"), p.addressC},
                          {QStringLiteral("電話番号"), digitsOf(phone)},
                          {QStringLiteral("法人個人区分"), QStringLiteral("0")},
                          {QStringLiteral("ユーザID"), QStringLiteral("setup")},
                          {QStringLiteral("登録日付"), p.entry + QStringLiteral(" 090000")}});
}

} // namespace

bool seedMain(RowWriter& writer, const QString& photoFolder, const QString& documentFolder) {
    const QString klass = QStringLiteral("区分");
    const QString code = QStringLiteral("コード");
    const bool classes =
        insertPairs(writer, QStringLiteral("K性別区分"), klass, {{"1", "男"}, {"2", "女"}}) &&
        insertPairs(writer, QStringLiteral("K在籍区分"), klass, {{"0", "在籍"}, {"1", "休職"}, {"2", "退職"}}) &&
        insertPairs(writer, QStringLiteral("K社員区分"), klass,
                    {{"0", "役員"},
                     {"1", "正社員"},
                     {"2", "契約社員"},
                     {"3", "パート"},
                     {"4", "アルバイト"},
                     {"5", "派遣社員"},
                     {"6", "嘱託"},
                     {"7", "その他"}}) &&
        insertPairs(writer, QStringLiteral("K稼動状況区分"), klass,
                    {{"0", "準備中"}, {"1", "稼動"}, {"2", "休止"}, {"3", "廃止"}}) &&
        insertPairs(writer, QStringLiteral("M就業形態"), code,
                    {{"001", "常勤"}, {"002", "短時間勤務"}, {"003", "交替勤務"}, {"004", "在宅勤務"}});
    if (!classes)
        return false;

    struct Era {
        const char* code;
        const char* name;
        const char* start;
    };
    for (const Era& era : {Era{"0", "西暦", "00010101"}, Era{"1", "明治", "18680908"}, Era{"2", "大正", "19120730"},
                           Era{"3", "昭和", "19261225"}, Era{"4", "平成", "19890108"}, Era{"5", "令和", "20190501"}}) {
        if (!writer.insert(QStringLiteral("K年号区分"), {{klass, QString::fromUtf8(era.code)},
                                                         {QStringLiteral("名称"), QString::fromUtf8(era.name)},
                                                         {QStringLiteral("開始日付"), QString::fromUtf8(era.start)}}))
            return false;
    }

    Values company{{QStringLiteral("ID"), QStringLiteral("0001")},
                   {QStringLiteral("名称"), QStringLiteral("株式会社さくら商事")},
                   {QStringLiteral("郵便番号"), QStringLiteral("100-0005")},
                   {QStringLiteral("住所A"), QStringLiteral("東京都千代田区")},
                   {QStringLiteral("住所B"), QStringLiteral("丸の内二丁目4番1号")},
                   {QStringLiteral("代表者名"), QStringLiteral("代表取締役 佐藤 一郎")},
                   {QStringLiteral("電話"), officePhone(kHeadOffice, 0)},
                   {QStringLiteral("FAX"), officePhone(kHeadOffice, 1)},
                   {QStringLiteral("決算月"), QStringLiteral("3")},
                   {QStringLiteral("決算日"), QStringLiteral("31")},
                   {QStringLiteral("伝票番号管理区分"), QStringLiteral("0")},
                   {QStringLiteral("暗証番号有無"), QStringLiteral("0")},
                   {QStringLiteral("更新実行区分"), QStringLiteral("0")},
                   {QStringLiteral("写真フォルダ"), photoFolder},
                   {QStringLiteral("ドキュメントフォルダ"), documentFolder},
                   {QStringLiteral("登録日付"), QStringLiteral("20240401 090000")}};
    // The remaining numeric settings of the company row start at zero.
    for (const char* column : {"締日区分",
                               "締日",
                               "決済方法",
                               "決済月",
                               "決済日",
                               "現金決済金額",
                               "手形サイト",
                               "売上金額丸め方法",
                               "仕入金額丸め方法",
                               "在庫評価方法",
                               "売上単価少数以下桁数",
                               "売上数量少数以下桁数",
                               "仕入単価少数以下桁数",
                               "仕入数量少数以下桁数",
                               "在庫単価少数以下桁数",
                               "在庫数量少数以下桁数",
                               "重量少数以下桁数",
                               "得意先単価自動更新区分",
                               "納品先単価自動更新区分",
                               "仕入先単価自動更新区分",
                               "明細保存月数",
                               "統計保存年数",
                               "整理実施可能日自",
                               "整理実施可能日至",
                               "整理実施可能時刻"})
        company.append({QString::fromUtf8(column), QStringLiteral("0")});
    if (!writer.insert(QStringLiteral("Mユーザ"), company))
        return false;

    if (!insertOffice(writer, kHeadOffice, officePhone(kHeadOffice, 0)))
        return false;
    for (const Office& office : kSeedBranches) {
        if (!insertOffice(writer, office, officePhone(office, 2)))
            return false;
    }

    const Values working{{QStringLiteral("稼動状況区分"), QStringLiteral("1")}};
    const bool organisation =
        insertPairs(writer, QStringLiteral("M部門"), code,
                    {{"001", "総務部"}, {"002", "経理部"}, {"003", "営業部"}, {"004", "技術部"}, {"005", "人事部"}},
                    working) &&
        insertPairs(writer, QStringLiteral("Mセクション"), code,
                    {{"001", "総務課"},
                     {"002", "経理課"},
                     {"003", "営業一課"},
                     {"004", "営業二課"},
                     {"005", "開発課"},
                     {"006", "品質管理課"},
                     {"007", "人事課"}},
                    working) &&
        insertPairs(writer, QStringLiteral("M役職"), code,
                    {{"01", "代表取締役"},
                     {"02", "取締役"},
                     {"03", "部長"},
                     {"04", "次長"},
                     {"05", "課長"},
                     {"06", "係長"},
                     {"07", "主任"},
                     {"08", "一般"}});
    if (!organisation)
        return false;

    if (!writer.insert(QStringLiteral("B履歴番号情報"), {{QStringLiteral("基本ID"), QStringLiteral("210")},
                                                         {QStringLiteral("名称"), QStringLiteral("担当者保守履歴")},
                                                         {QStringLiteral("連番種類"), QStringLiteral("0")},
                                                         {QStringLiteral("履歴連番"), QStringLiteral("00000000")}}))
        return false;
    if (!writer.insert(QStringLiteral("A番号情報"), {{QStringLiteral("番号ID"), QStringLiteral("01110")},
                                                     {QStringLiteral("名称"), QStringLiteral("閲覧番号")},
                                                     {QStringLiteral("連番種類"), QStringLiteral("0")},
                                                     {QStringLiteral("連番"), QStringLiteral("00000000")},
                                                     {QStringLiteral("履歴連番"), QStringLiteral("00000000")}}))
        return false;

    for (const Pair& system :
         {Pair{"002", "人事就業管理"}, Pair{"003", "財務会計"}, Pair{"004", "給与計算"}, Pair{"005", "販売管理"}}) {
        Values link{{code, QString::fromUtf8(system.key)},
                    {QStringLiteral("業務名"), QString::fromUtf8(system.name)},
                    {QStringLiteral("連携有無区分"), QStringLiteral("0")}};
        for (const char* flag : {"顧客更新有無区分", "得意先更新有無区分", "納品先更新有無区分", "仕入先更新有無区分",
                                 "メーカ更新有無区分", "対応先更新有無区分", "商品更新有無区分", "社員更新有無区分"})
            link.append({QString::fromUtf8(flag), QStringLiteral("0")});
        if (!writer.insert(QStringLiteral("M他業務連携"), link))
            return false;
    }
    return true;
}

bool seedDemo(RowWriter& writer) {
    int n = 3;
    for (const Office& office : kDemoBranches) {
        if (!insertOffice(writer, office, officePhone(office, n++)))
            return false;
    }
    // An old department and section, closed but still known to old rows.
    if (!writer.insert(QStringLiteral("M部門"), {{QStringLiteral("コード"), QStringLiteral("006")},
                                                 {QStringLiteral("名称"), QStringLiteral("企画部")},
                                                 {QStringLiteral("稼動状況区分"), QStringLiteral("3")}}) ||
        !writer.insert(QStringLiteral("Mセクション"), {{QStringLiteral("コード"), QStringLiteral("008")},
                                                       {QStringLiteral("名称"), QStringLiteral("企画課")},
                                                       {QStringLiteral("稼動状況区分"), QStringLiteral("3")}}))
        return false;

    Sequence random(20240401);
    Person married;
    for (int i = 1; i <= kStaffCount + kNewHires; ++i) {
        Person p = makePerson(i, random);
        if (i <= kStaffCount) {
            if (!writer.insert(QStringLiteral("M担当者"), p.staff))
                return false;
            if (!insertDirectory(writer, p, p.phone) || !insertDirectory(writer, p, p.mobile))
                return false;
        }
        if (p.employeeCode.isEmpty())
            continue;
        if (!insertHistory(writer, p, i))
            return false;
        if (!writer.insert(QStringLiteral("M社員"), p.employee))
            return false;
        if (p.woman && married.employeeCode.isEmpty())
            married = p;
    }
    if (married.employeeCode.isEmpty())
        return true;
    // A name changed by marriage, notified to the personnel system.
    return writer.insert(QStringLiteral("T諸届"),
                         {{QStringLiteral("社員コード"), married.employeeCode},
                          {QStringLiteral("諸届日付"), QStringLiteral("20220601")},
                          {QStringLiteral("諸届No"), QStringLiteral("001")},
                          {QStringLiteral("諸届区分"), QStringLiteral("1")},
                          {QStringLiteral("諸届氏名"), QStringLiteral("高橋 ") + married.givenName},
                          {QStringLiteral("諸届カナ氏名"), QStringLiteral("ﾀｶﾊｼ ") + married.givenKana}});
}

QList<DemoEmployee> demoEmployees() {
    QList<DemoEmployee> all;
    Sequence random(20240401);
    for (int i = 1; i <= kStaffCount + kNewHires; ++i) {
        const Person p = makePerson(i, random);
        if (p.employeeCode.isEmpty())
            continue;
        const bool newHire = i > kStaffCount;
        DemoEmployee e;
        e.code = p.employeeCode;
        e.familyName = p.name.section(QLatin1Char(' '), 0, 0);
        e.woman = p.woman;
        e.photos = newHire || i % 2 == 0 ? (i % 8 == 0 ? 2 : 1) : 0;
        e.seal = newHire || i % 4 == 0;
        e.staff = !newHire;
        all.append(e);
    }
    return all;
}

} // namespace setup
