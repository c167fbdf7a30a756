#include "demo/DemoPeople.h"

#include "patients/EgnRules.h"

#include <QStringList>

namespace demopeople {
namespace {

const QStringList &maleNames()
{
    static const QStringList names = QStringLiteral(
        "Иван Георги Димитър Петър Николай Христо Стоян Тодор Васил Александър Йордан Стефан Атанас Кирил Любомир "
        "Борис Красимир Пламен Цветан Илия Ангел Владимир Симеон Мартин Калоян Радослав Емил Валентин Огнян Здравко")
                                          .split(u' ');
    return names;
}

const QStringList &femaleNames()
{
    static const QStringList names = QStringLiteral(
        "Мария Иванка Елена Йорданка Пенка Даниела Росица Петя Гергана Снежана Надежда Виктория Цветелина Радка "
        "Милена Десислава Анелия Силвия Невена Теодора Катерина Валентина Светла Божана Ралица Здравка Габриела "
        "Николина Веселина Антоанета")
                                          .split(u' ');
    return names;
}

// Father's names and family names in the male form; the female form adds "а".
const QStringList &fatherNames()
{
    static const QStringList names = QStringLiteral(
        "Иванов Георгиев Димитров Петров Николов Христов Стоянов Тодоров Василев Йорданов Стефанов Атанасов "
        "Кирилов Борисов Цветанов Илиев Ангелов Симеонов Емилов Костадинов")
                                          .split(u' ');
    return names;
}

const QStringList &familyNames()
{
    static const QStringList names = QStringLiteral(
        "Попов Колев Маринов Русев Генчев Кръстев Янков Вълчев Гочев Славов Пенев Манолов Добрев Данчев Милев "
        "Тончев Петков Станев Дончев Бонев Ганчев Лазаров Минчев Радев Спасов Захариев Йотов Василев Дичев Белчев")
                                          .split(u' ');
    return names;
}

QString pick(QRandomGenerator &random, const QStringList &list) { return list.at(random.bounded(int(list.size()))); }

QString twoDigits(int value) { return QStringLiteral("%1").arg(value, 2, 10, QChar(u'0')); }

} // namespace

QString makeEgn(QRandomGenerator &random, const QDate &born, bool male)
{
    const int monthCode = born.year() >= 2000 ? born.month() + 40 : born.month();
    int running = random.bounded(1000);
    if ((running % 2 == 0) != male)
        running = (running + 1) % 1000;
    const QString nine = twoDigits(born.year() % 100) + twoDigits(monthCode) + twoDigits(born.day())
                       + QStringLiteral("%1").arg(running, 3, 10, QChar(u'0'));
    return nine + QString::number(EgnCheckDigit(nine));
}

Person makePerson(QRandomGenerator &random, const QDate &born)
{
    Person person;
    person.male = random.bounded(2) == 0;
    person.egn = makeEgn(random, born, person.male);
    const QString ending = person.male ? QString() : QStringLiteral("а");
    person.firstName = pick(random, person.male ? maleNames() : femaleNames());
    person.names = person.firstName + u' ' + pick(random, fatherNames()) + ending + u' ' + pick(random, familyNames())
                 + ending;
    return person;
}

QString streetName(QRandomGenerator &random)
{
    static const QStringList streets = QStringLiteral(
        "Витоша|Г. С. Раковски|Васил Левски|Христо Ботев|Цар Симеон|Александър Стамболийски|Шипка|Ген. Гурко|"
        "Иван Вазов|Оборище|Славянска|Девети септември|Княз Борис I|Тракия|Рила|Пирин|Стара планина|Дунав|Марица|"
        "Освобождение")
                                           .split(u'|');
    return pick(random, streets);
}

} // namespace demopeople
