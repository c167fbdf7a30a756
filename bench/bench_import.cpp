// The ZOKS import of a source of 50,000 patients, a real Jet 3 file written at bench time by
// jetwrite.py (JETWRITE names it; python3 runs it) into a temporary folder. It must take under
// ten seconds, reading the file included.
#include "maintenance/ZoksImport.h"
#include "store/DataPaths.h"
#include "store/Sql.h"
#include "store/Store.h"

#include <QCoreApplication>
#include <QProcess>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

namespace {

constexpr int SourcePatients = 50000;

const char *generator = R"(
import sys, datetime
sys.path.insert(0, sys.argv[1])
from jetwrite import write_mdb
n = int(sys.argv[3])
T = lambda k: 'TEXT(%d)' % k
pat = [('IDNUMBER', T(10)), ('NAME1', T(30)), ('NAME2', T(30)), ('NAME3', T(30)), ('POL', 'INT'),
       ('BIRTHDATE', 'DATETIME'), ('DATEREG', 'DATETIME'), ('HIMNUMBER', T(10)), ('RECBOOK', T(10))]
adr = [(c, T(40)) for c in ('IDNUMBER', 'POSTCODE', 'STREET1', 'STREET2', 'NOMSTRT', 'NOMBLOK', 'VHOD', 'ETAG',
                            'APART', 'TOWNVILLAG', 'TELEFON', 'FAX')]
ekn = [(c, T(30)) for c in ('TOWNVILLAG', 'DISTRICTCO', 'HRCODE', 'KIND', 'TOWNVILLA2', 'MUNICIPALI')]
towns = [('68134', '22', '01', 'гр.', 'София', 'SOF46'), ('56784', '16', '01', 'гр.', 'Пловдив', 'PDV22'),
         ('10135', '03', '01', 'гр.', 'Варна', 'VAR06')]
prow, arow = [], []
for i in range(n):
    egn = '%010d' % (1000000000 + i)
    prow.append([egn, 'Иван', 'Петров' if i % 3 else None, 'Иванов', i % 2,
                 datetime.date(1950 + i % 60, 1 + i % 12, 1 + i % 28), datetime.date(2010, 1, 1), '%08d' % i, None])
    arow.append([egn, '1000', 'Витоша', None, str(i % 200), '12', 'А', '3', str(i % 90), towns[i % 3][0],
                 '02/981111', None])
write_mdb(sys.argv[2], [('patients', pat, prow), ('address', adr, arow), ('eknm', ekn, [list(t) for t in towns]),
                        ('s_code', [('CODE', T(10)), ('NAME', T(30))], [['SOF46', 'Столична'], ['PDV22', 'Пловдив'], ['VAR06', 'Варна']]),
                        ('st_code', [('TYPE', T(10)), ('NAME', T(30))], [['22', 'София-град'], ['16', 'Пловдив'], ['03', 'Варна']])])
)";

QString makeSource(const QString &folder)
{
    const QString tool = qEnvironmentVariable("JETWRITE", QStringLiteral("/work/shared/tools/jetwrite.py"));
    const QString path = folder + QStringLiteral("/temp.mdb");
    QProcess python;
    python.start(QStringLiteral("python3"), {QStringLiteral("-c"), QString::fromUtf8(generator),
                                             tool.section(u'/', 0, -2), path, QString::number(SourcePatients)});
    if (!python.waitForFinished(600000) || python.exitCode() != 0)
        qFatal("jetwrite failed: %s", python.readAllStandardError().constData());
    return path;
}

void BM_ZoksImport50k(benchmark::State &state)
{
    QTemporaryDir dir;
    const QString source = makeSource(dir.path());
    for (auto _ : state) {
        state.PauseTiming();
        QTemporaryDir practice;
        if (!store::openStore(store::DataPaths::inFolder(practice.path())).ok())
            qFatal("cannot make the practice");
        state.ResumeTiming();
        const auto imported = zoks::ImportFromZoks(store::clinicDb(), source, QStringLiteral("2200001234"));
        state.PauseTiming();
        if (!imported || imported->patients != SourcePatients)
            qFatal("import failed: %s", qPrintable(imported ? zoks::summaryText(imported.value()) : imported.error()));
        store::closeStore();
        state.ResumeTiming();
    }
    state.counters["patients"] = SourcePatients;
}
BENCHMARK(BM_ZoksImport50k)->Unit(benchmark::kMillisecond)->Iterations(1);

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
