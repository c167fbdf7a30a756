#pragma once

#include "store/Result.h"

#include <QHash>
#include <QSqlDatabase>
#include <QString>
#include <QVariant>

// The patient's part of the treatment window: the window caption, the address and telephone
// lines and the notes, built from the patient's row of Pacients.
using PatientFields = QHash<QString, QVariant>; // field name -> value, as read from Pacients

// "Картон на <Names> с ЕГН <EGN>  ЗОК №<ZBook>"
QString PatientCaption(const PatientFields &patient);
// Tawn, then ", " KV, ", " UL, ", бл." BL, ", вх." VX, ", ет." ET, ", ап." AP for each that is not blank.
QString PatientAddress(const PatientFields &patient);
// "дом.", ", сл." with the area code and "/", ", моб." without it, each when its field has any text at all.
QString PatientTelephone(const PatientFields &patient);
// The name up to and including its first blank; a name with no blank gives an empty text.
QString FirstName(const QString &name);

struct PatientHeader final
{
    bool found = false; // a Pacients row exists for the number
    QString caption;
    QString address;
    QString telephone;
    PatientFields fields; // ZabNaw, ZabOld, Nep, KrGr, Ph, Osob ... as stored
};

Result<PatientHeader> LoadPatientHeader(const QSqlDatabase &clinic, const QString &egn);
