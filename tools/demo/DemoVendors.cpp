#include "DemoVendors.h"

#include "DemoRandom.h"
#include "DemoWords.h"

#include <algorithm>
#include <array>

namespace Demo::Vendors {
namespace {

constexpr int maxNameLength = 30;
constexpr int lastUsualNumber = 99999;

// Trades by their position in Words::trades().
enum TradeIndex {
    OfficeSupply = 0,
    Printing = 1,
    Utilities = 4,
    Computer = 5,
    Rent = 6,
    Catering = 7,
    AudioVisual = 9,
    Plumbing = 11,
    Cleaning = 13,
    Grounds = 14,
    Legal = 16,
    Accounting = 17,
    Person = 19,
    Lender = 20,
    Dividends = 21
};

// A vendor the demo always has, whatever its size.
struct Profile {
    int form;
    qint64 ytd;     // cents, -1 for none
    qint64 current; // cents, -1 for none
    int trade;
    const char *name;  // nullptr: made up like any other
    const char *city;  // nullptr: anywhere in the US
    const char *taxId; // nullptr: made up
};

const std::array<Profile, 19> &profiles()
{
    // form, YTD cents, current balance cents, trade, name, city, tax id
    static const std::array<Profile, 19> list = {{
        {1, 60000, -1, Catering, "O'Brien Catering", "Springfield", nullptr},
        {1, 59999, -1, Plumbing, "Mike's Plumbing", "Chatham", nullptr},
        {1, 60001, -1, Rent, "Lakeshore Properties LLC", "Chicago", nullptr},
        {4, 60000, -1, Legal, "Keller & D'Amico LLP", "Springfield", nullptr},
        {5, 60000, -1, Person, "Janet Morales", "Springfield", nullptr},
        {5, 60001, -1, Grounds, nullptr, nullptr, nullptr},
        {5, 59999, -1, Computer, nullptr, nullptr, nullptr},
        {3, 60000, -1, Dividends, nullptr, nullptr, nullptr},
        {3, 150000, -1, Dividends, nullptr, nullptr, nullptr},
        {2, 60000, -1, Lender, nullptr, nullptr, nullptr},
        {2, 0, -1, Lender, nullptr, nullptr, nullptr},
        {1, 0, -1, AudioVisual, nullptr, nullptr, nullptr},
        {0, 60000, -1, OfficeSupply, "Acme Office Supply", "Springfield", nullptr},
        {0, -1, -1, Printing, "Northern Lights Printing Ltd.", "Toronto", nullptr},
        {0, -1, -1, Printing, "Imprimerie Côté Ltée", "Montréal", nullptr},
        {1, 125000, -1, Cleaning, nullptr, nullptr, "12-345-6789"},
        {0, -1, 123450, Utilities, "Springfield Power & Light", "Springfield", nullptr},
        {4, 250000, -1, Rent, nullptr, nullptr, nullptr},
        {5, 0, -1, Accounting, nullptr, nullptr, nullptr},
    }};
    return list;
}

const Profile *profileAt(int position, int count)
{
    const int n = int(profiles().size());
    if (position < 1 || count < 2)
        return nullptr;
    const int stride = std::max(1, (count - 1) / n);
    if ((position - 1) % stride != 0 || (position - 1) / stride >= n)
        return nullptr;
    return &profiles()[std::size_t((position - 1) / stride)];
}

int randomForm(Random &r)
{
    const int roll = r.below(100); // 0:62 1:26 2:3 3:3 4:2 5:4
    if (roll < 62)
        return 0;
    if (roll < 88)
        return 1;
    if (roll < 91)
        return 2;
    if (roll < 94)
        return 3;
    if (roll < 96)
        return 4;
    return 5;
}

int tradeFor(int form, Random &r)
{
    std::vector<int> fitting;
    const auto &trades = Words::trades();
    for (int i = 0; i < int(trades.size()); ++i)
        if (trades[std::size_t(i)].forms.contains(form))
            fitting.push_back(i);
    return fitting[std::size_t(r.below(int(fitting.size())))];
}

const Place &placeNamed(const char *city)
{
    for (const auto *list : {&Words::usPlaces(), &Words::canadianPlaces()})
        for (const Place &place : *list)
            if (place.city == QString::fromUtf8(city))
                return place;
    return Words::usPlaces().front();
}

const Place &randomPlace(Random &r)
{
    const auto &us = Words::usPlaces();
    const auto &ca = Words::canadianPlaces();
    const int roll = r.below(100);
    if (roll < 30)
        return us.front(); // the organisation's own city
    if (roll < 55)
        return us[std::size_t(r.between(1, 7))]; // elsewhere in Illinois
    if (roll < 84)
        return us[std::size_t(r.between(8, int(us.size()) - 1))];
    return ca[std::size_t(r.below(int(ca.size())))];
}

QString personName(bool french, Random &r)
{
    if (french)
        return r.pick(Words::frenchGivenNames()) + QLatin1Char(' ') +
               r.pick(Words::frenchSurnames());
    return r.pick(Words::givenNames()) + QLatin1Char(' ') + r.pick(Words::surnames());
}

QString suffix(const Place &place, bool french, Random &r)
{
    const int roll = r.below(100);
    if (french)
        return roll < 35   ? QStringLiteral(" inc.")
               : roll < 60 ? QStringLiteral(" Ltée")
                           : QString();
    if (place.canada)
        return roll < 35   ? QStringLiteral(" Ltd.")
               : roll < 65 ? QStringLiteral(" Inc.")
                           : QString();
    if (roll < 45)
        return {};
    return roll < 70   ? QStringLiteral(" Inc.")
           : roll < 88 ? QStringLiteral(" LLC")
                       : QStringLiteral(" Co.");
}

QString companyName(const Trade &trade, int tradeIndex, const Place &place, bool french, Random &r)
{
    if (trade.person || ((tradeIndex == Lender || tradeIndex == Dividends) && r.chance(0.5)))
        return personName(french, r);
    if (french && !trade.frenchWords.isEmpty() && r.chance(0.75))
        return r.pick(trade.frenchWords) + QLatin1Char(' ') + r.pick(Words::frenchSurnames()) +
               suffix(place, true, r);
    const QString word = r.pick(trade.words);
    const QString surname = r.pick(Words::surnames());
    const bool professional = tradeIndex == Legal || tradeIndex == Accounting;
    const int roll = r.below(100);
    QString name;
    if (roll < 35 || word.startsWith(QLatin1Char('&'))) {
        name = surname + QLatin1Char(' ') + word;
    } else if (roll < 70) {
        const QStringList &prefixes =
            place.canada && r.chance(0.7) ? Words::canadianPrefixes() : Words::companyPrefixes();
        name = r.pick(prefixes) + QLatin1Char(' ') + word;
    } else if (roll < 80 && trade.ownerName) {
        name = r.pick(Words::givenNames()) + QStringLiteral("'s ") + word;
    } else if (roll < 90) {
        name = surname + QStringLiteral(" & ") + r.pick(Words::surnames());
        return name + (professional ? QStringLiteral(" LLP") : QStringLiteral(" Co."));
    } else {
        name = place.city + QLatin1Char(' ') + word;
    }
    return professional && r.chance(0.5) ? name + QStringLiteral(" LLP")
                                         : name + suffix(place, false, r);
}

QString fittingName(const Trade &trade, int tradeIndex, const Place &place, bool french, Random &r)
{
    QString name;
    for (int attempt = 0; attempt < 12; ++attempt) {
        name = companyName(trade, tradeIndex, place, french, r);
        if (name.size() <= maxNameLength)
            return name;
    }
    return name.left(maxNameLength).trimmed();
}

QString phone(const Place &place, Random &r)
{
    return place.areaCode + QStringLiteral("-555-01") + r.digits(2);
}

QString postalCode(const Place &place, Random &r)
{
    if (!place.canada)
        return place.postal + r.digits(2) +
               (r.chance(0.5) ? QLatin1Char('-') + r.digits(4) : QString());
    static const QString letters = QStringLiteral("ABCEGHJKLMNPRSTVWXYZ");
    return place.postal + QLatin1Char(' ') + r.digits(1) +
           letters.at(r.below(int(letters.size()))) + r.digits(1);
}

QString streetAddress(const Place &place, bool french, Random &r)
{
    const QString number = QString::number(r.between(1, 9899));
    if (french)
        return number + QStringLiteral(", ") + r.pick(Words::frenchStreets());
    return number + QLatin1Char(' ') +
           r.pick(place.canada ? Words::canadianStreets() : Words::streets()) + QLatin1Char(' ') +
           r.pick(Words::streetKinds());
}

QString secondLine(bool french, Random &r)
{
    const int roll = r.below(100);
    if (roll < 6)
        return {}; // null
    if (roll < 60)
        return QStringLiteral("");
    const QString n = QString::number(r.between(1, 9) * 100 + r.between(0, 20));
    if (roll < 75)
        return (french ? QStringLiteral("Bureau ") : QStringLiteral("Suite ")) + n;
    if (roll < 85)
        return QStringLiteral("Unit ") + QString::number(r.between(1, 40));
    if (roll < 95)
        return (french ? QStringLiteral("C.P. ") : QStringLiteral("P.O. Box ")) + r.digits(4);
    return QStringLiteral("Floor ") + QString::number(r.between(2, 30));
}

QString taxId(const Vendor &v, bool person, Random &r)
{
    if (v.canada)
        return r.chance(0.5) ? r.digits(9) + QStringLiteral(" RT0001") : QStringLiteral("");
    if (v.form1099 == 0 && r.chance(0.3))
        return QStringLiteral("");
    if (person)
        return QString::number(r.between(100, 899)) + QLatin1Char('-') + r.digits(2) +
               QLatin1Char('-') + r.digits(4);
    const QString prefix = QString::number(r.between(10, 98));
    if (r.chance(0.1))
        return prefix + QLatin1Char('-') + r.digits(3) + QLatin1Char('-') + r.digits(4);
    return prefix + QLatin1Char('-') + r.digits(7);
}

QString terms(Random &r)
{
    const int roll = r.below(100);
    if (roll < 40)
        return QStringLiteral("Net 30");
    if (roll < 55)
        return QStringLiteral("1");
    if (roll < 70)
        return QStringLiteral("2/10 Net 30");
    if (roll < 80)
        return QStringLiteral("Net 15");
    if (roll < 88)
        return QStringLiteral("Due on receipt");
    return QStringLiteral("");
}

QString account(Random &r)
{
    switch (r.below(6)) {
    case 0:
        return QStringLiteral("VOA-") + r.digits(5);
    case 1:
        return QStringLiteral("ACCT ") + r.digits(6);
    case 2:
        return QStringLiteral("C") + r.digits(6);
    case 3:
        return r.digits(4) + QLatin1Char('-') + r.digits(4);
    default:
        return QStringLiteral("");
    }
}

double glAccountFor(const Trade &trade, Random &r)
{
    if (trade.glAccount == 5100 && r.chance(0.15))
        return 5100.5;
    if (trade.glAccount == 5640 && r.chance(0.3))
        return r.chance(0.5) ? 5600.1 : 5600.2;
    return trade.glAccount;
}

} // namespace

std::vector<int> numbers(int count, Random &random)
{
    std::vector<int> result;
    result.reserve(std::size_t(std::max(count, 0)));
    const int start = count <= lastUsualNumber - 99 ? 100 : 1;
    const long long room = lastUsualNumber - start + 1;
    const int maxStep = int(std::clamp<long long>(count > 0 ? 2 * room / count - 1 : 40, 1, 40));
    long long current = start;
    for (int i = 0; i < count; ++i) {
        result.push_back(int(current));
        const int left = count - i - 1;
        long long step = random.between(1, maxStep);
        const long long largest = lastUsualNumber - current - left; // keeps the rest in range
        if (step > largest)
            step = std::max<long long>(1, largest);
        current += step;
    }
    return result;
}

bool hasTargets(int position, int count)
{
    const Profile *profile = profileAt(position, count);
    return profile && (profile->ytd > 0 || profile->current > 0);
}

QString slug(const QString &name)
{
    static const QStringList endings = {" Inc.", " LLC", " Co.", " Ltd.", " Ltée", " LLP", " inc."};
    QString base = name;
    for (const QString &ending : endings)
        if (base.endsWith(ending))
            base.chop(ending.size());
    QString result;
    for (const QChar c : base.normalized(QString::NormalizationForm_KD).toLower())
        if ((c >= QLatin1Char('a') && c <= QLatin1Char('z')) || c.isDigit())
            result += c;
    return result.left(24);
}

Vendor make(int position, int number, int count, std::uint64_t seed)
{
    Random r = Random::stream(seed, (std::uint64_t(1) << 40) + std::uint64_t(position));
    const Profile *profile = profileAt(position, count);
    Vendor v;
    v.number = number;
    v.form1099 = profile ? profile->form : randomForm(r);
    v.trade = profile ? profile->trade : tradeFor(v.form1099, r);
    if (position == 0) { // an everyday supplier: in a big company it gets the most invoices
        v.form1099 = 0;
        v.trade = OfficeSupply;
    }
    const Trade &trade = Words::trades()[std::size_t(v.trade)];
    const Place &place = profile && profile->city ? placeNamed(profile->city) : randomPlace(r);
    const bool french = place.french && r.chance(0.65);
    v.canada = place.canada;
    v.name = profile && profile->name ? QString::fromUtf8(profile->name)
                                      : fittingName(trade, v.trade, place, french, r);
    if (profile) {
        v.ytdTarget = profile->ytd;
        v.currentTarget = profile->current;
    }

    v.addr1 = streetAddress(place, french, r);
    v.addr2 = secondLine(french, r);
    v.city = place.city;
    v.state = place.state;
    v.zip = postalCode(place, r);
    v.phone = phone(place, r);
    const int faxRoll = r.below(100);
    v.fax = faxRoll < 65 ? phone(place, r) : faxRoll < 90 ? QStringLiteral("") : QString();
    v.contact = trade.person ? v.name : personName(french, r);

    const QString domain =
        slug(v.name) + (place.canada ? QStringLiteral(".ca") : QStringLiteral(".com"));
    const QString first = slug(v.contact.section(QLatin1Char(' '), 0, 0));
    const QString last = slug(v.contact.section(QLatin1Char(' '), -1));
    const int mailRoll = r.below(100);
    if (trade.person)
        v.email =
            first + QLatin1Char('.') + last + QLatin1Char('@') + r.pick(Words::freeMailDomains());
    else if (mailRoll < 40)
        v.email = r.pick({"info", "billing", "accounts", "ar", "office", "sales"}) +
                  QLatin1Char('@') + domain;
    else if (mailRoll < 75)
        v.email = first.left(1) + last + QLatin1Char('@') + domain;
    else if (mailRoll < 90)
        v.email = QStringLiteral("");
    else
        v.email = QString(); // null

    const int cellRoll = r.below(100);
    v.cellOther = cellRoll < 25   ? phone(place, r)
                  : cellRoll < 35 ? QStringLiteral("Cell ") + phone(place, r)
                  : cellRoll < 85 ? QStringLiteral("")
                                  : QString();
    if (r.chance(0.35)) {
        v.contact2Name = personName(french, r);
        v.contact2Phone = phone(place, r);
        v.contact2Email = slug(v.contact2Name.section(QLatin1Char(' '), 0, 0)) + QLatin1Char('.') +
                          slug(v.contact2Name.section(QLatin1Char(' '), -1)) + QLatin1Char('@') +
                          domain;
    } else {
        const QString empty = r.chance(0.1) ? QString() : QStringLiteral("");
        v.contact2Name = v.contact2Phone = v.contact2Email = empty;
    }
    v.account = account(r);
    v.terms = terms(r);
    v.glAccount = glAccountFor(trade, r);
    v.taxId =
        profile && profile->taxId ? QString::fromLatin1(profile->taxId) : taxId(v, trade.person, r);
    return v;
}

} // namespace Demo::Vendors
