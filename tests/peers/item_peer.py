#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
# SPDX-License-Identifier: Apache-2.0
"""Holds what other programs read of iCalendar 2.0 to the records that it was written from.

Usage: item_peer.py RECORDS TEXT REPORT LIBICAL
RECORDS is what 'inspect --json' prints, TEXT and REPORT what 'convert --to icalendar' writes, and
LIBICAL what item_peer prints of TEXT. Each field of each record is compared with what libical and
python3-icalendar make of it, but for those that the report tells. Days are days of UTC.
"""
import datetime
import json
import sys

import icalendar

KINDS = {'VEVENT': 1, 'VTODO': 2, 'VJOURNAL': 3}
CLASSES = [None, 'PUBLIC', 'PRIVATE', 'CONFIDENTIAL']
STATUSES = [None, 'ACCEPTED', 'SENT', 'TENTATIVE', 'CONFIRMED', 'DECLINED', 'COMPLETED', 'DELEGATED']
DAYS = ['SU', 'MO', 'TU', 'WE', 'TH', 'FR', 'SA']
RULES = {1: ('D', 'DAILY', None), 2: ('W', 'WEEKLY', 'BYDAY'), 3: ('MP', 'MONTHLY', 'BYDAY'),
         4: ('MD', 'MONTHLY', 'BYMONTHDAY'), 5: ('YM', 'YEARLY', 'BYMONTH'),
         6: ('YD', 'YEARLY', 'BYYEARDAY')}


class Item:
    """An item as a peer reads it: texts by the names of properties."""

    def __init__(self, kind, properties, alarms):
        self.kind = kind
        self.properties = {}
        for name, value in properties:
            self.properties.setdefault(name, []).append(value)
        self.alarms = alarms

    def get(self, *names):
        """The value of the first of these properties that stands; None without one."""
        for name in names:
            if name in self.properties:
                assert len(self.properties[name]) == 1 or name == 'CATEGORIES', name
                return self.properties[name][0]
        return None

    def time(self, *names):
        """The same as a moment, a day being its midnight."""
        return moment_of(self.get(*names))


def moment_of(text):
    if not text:
        return None
    digits = ''.join(c for c in text if c.isdigit()).ljust(14, '0')
    return datetime.datetime.strptime(digits, '%Y%m%d%H%M%S')


def libical_items(path):
    with open(path, encoding='utf-8') as file:
        return [Item(item['kind'], item['properties'],
                     [Item(alarm['kind'], alarm['properties'], []) for alarm in item['alarms']])
                for item in json.load(file)]


def python_value(value, parameters):
    if isinstance(value, icalendar.vRecur):
        return value.to_ical().decode()
    moment = getattr(value, 'dt', None)
    if isinstance(moment, datetime.datetime):
        if moment.tzinfo is not None:
            moment = moment.astimezone(datetime.timezone.utc)
        return moment.strftime('%Y-%m-%dT%H:%M:%S')
    if isinstance(moment, datetime.date):
        return moment.isoformat()
    if isinstance(moment, datetime.timedelta):
        seconds = str(int(moment.total_seconds()))
        related = 'END' if parameters.get('RELATED') == 'END' else 'START'
        return related + ' ' + seconds if parameters.get('TRIGGER') else seconds
    return str(value)


def python_item(component):
    assert not component.errors, component.errors
    properties = []
    for name, value in component.property_items(recursive=False):
        if name in ('BEGIN', 'END'):
            continue
        values = [value]
        if isinstance(value, icalendar.prop.vDDDLists):
            values = value.dts
        elif isinstance(value, icalendar.prop.vCategory):
            values = value.cats
        parameters = dict(getattr(value, 'params', {}))
        parameters['TRIGGER'] = name == 'TRIGGER'
        properties += [(name, python_value(each, parameters)) for each in values]
    return Item(component.name, properties,
                [python_item(alarm) for alarm in component.subcomponents])


def python_items(path):
    with open(path, 'rb') as file:
        calendar = icalendar.Calendar.from_ical(file.read())
    return [python_item(component) for component in calendar.subcomponents
            if component.name != 'VTIMEZONE']


def stamp(moment):
    return None if moment is None else moment.isoformat()


def rule_words(rule):
    """A rule as vCalendar 1.0 spells it."""
    def signed(number, plus):
        return str(abs(number)) + ('-' if number < 0 else plus)
    kind = rule['type']
    words = RULES[kind][0] + str(rule['interval']) + ('' if kind == 1 else ' ')
    if kind == 3:
        words += ''.join(signed(n, '+') + ' ' for n in rule['positions'])
        words += ''.join(DAYS[n] + ' ' for n in rule['weekdays'])
    elif kind == 2:
        words += ''.join(DAYS[n] + ' ' for n in rule['days'])
    elif kind > 3:
        words += ''.join(signed(n, '') + ' ' for n in rule['days'])
    if rule['endDate'] is None or rule['count'] > 0:
        words += (' #' if kind == 1 else '#') + str(rule['count'])
    if rule['endDate'] is not None:
        words += ' ' + rule['endDate'].replace('-', '').replace(':', '') + 'Z'
    return words


def rule_parts(rule, start):
    """What RRULE has to say for a rule, and how it may end."""
    _, frequency, name = RULES[rule['type']]
    weekday = DAYS[(start.weekday() + 1) % 7]
    parts = {'FREQ': frequency}
    if rule['interval'] > 1:
        parts['INTERVAL'] = str(rule['interval'])
    if rule['type'] == 2:
        entries = [DAYS[day] for day in rule['days']]
    elif rule['type'] == 3:
        positions = rule['positions'] or [(start.day - 1) // 7 + 1]
        entries = [str(position) + day for position in positions
                   for day in [DAYS[n] for n in rule['weekdays']] or [weekday]]
    else:
        entries = [str(number) for number in rule.get('days', [])]
        if rule['type'] == 6 and not entries:
            entries = [start.strftime('%j').lstrip('0')]
    if entries:
        parts[name] = ','.join(sorted(entries))
    ends = set()
    if rule['count'] > 0:
        ends.add(('COUNT', str(rule['count'])))
    if rule['endDate'] is not None:
        end = rule['endDate'].replace('-', '').replace(':', '')
        ends.add(('UNTIL', end + 'Z'))
        ends.add(('UNTIL', end[:8]))
    return parts, ends


def recurrence(item, record):
    """None where RRULE says the record's rule, else what it says."""
    said = item.get('RRULE')
    rule = record['recurrence']
    own = item.get('X-PIMVOBJ-RRULE')
    if own is not None and own != rule_words(rule):
        return own
    if rule is None or said is None:
        return said
    start = datetime.datetime.fromisoformat(local_start(item, record))
    parts, ends = rule_parts(rule, start)
    told = dict(part.split('=') for part in said.split(';'))
    if told.get('INTERVAL') == '1':
        del told['INTERVAL']
    end = [(name, told.pop(name)) for name in ('COUNT', 'UNTIL') if name in told]
    told = {name: ','.join(sorted(entry.lstrip('+') for entry in value.split(',')))
            for name, value in told.items()}
    is_good = told == parts and (set(end) <= ends and len(end) == bool(ends))
    return None if is_good else said


def local_start(item, record):
    """The start by the clock of the record's zone, whose weekdays a rule has."""
    start = item.time('DTSTART')
    zone = record['zone']
    offset = zone['tzOffset']
    if zone['daylightStart'] and record['allday'] == 0:
        begin, end = (datetime.datetime.fromisoformat(zone[name])
                      for name in ('daylightStart', 'daylightEnd'))
        if begin < start < end:
            offset = zone['daylightOffset']
    if record['allday'] == 1:
        offset = 0
    return (start + datetime.timedelta(seconds=offset)).isoformat()


def alarm_time(item):
    if not item.alarms:
        return moment_of(own_alarm(item)[0])
    trigger = item.alarms[0].get('TRIGGER')
    related, _, seconds = trigger.partition(' ')
    if not seconds:
        return item.alarms[0].time('TRIGGER')
    anchor = item.time('DUE') if related == 'END' else item.time('DTSTART')
    return anchor + datetime.timedelta(seconds=int(seconds))


def own_alarm(item):
    return (item.get('X-PIMVOBJ-AALARM') or ';;;').split(';', 3)


def length_of(text):
    """The seconds of vCalendar 1.0's form."""
    seconds, number, in_time = 0, '', False
    for c in text[1:]:
        if c.isdigit():
            number += c
        elif c == 'T':
            in_time = True
        else:
            seconds += int(number) * {'D': 86400, 'H': 3600, 'M': 60, 'S': 1}[c]
            number = ''
    return seconds


def reminder(item):
    formats = (item.get('X-PIMVOBJ-AALARM-FORMAT') or '').split(';')
    alarm = item.alarms[0] if item.alarms else Item('', [], [])
    _, snooze, repeats, text = own_alarm(item)
    has_any = bool(item.alarms) or 'X-PIMVOBJ-AALARM' in item.properties
    repeats = alarm.get('REPEAT') or repeats or '0'
    return {'reminderType': sum(bit for word, bit in (('PCM', 16), ('WAVE', 32), ('AIFF', 64))
                                if 'TYPE=' + word in formats),
            'valueType': int('VALUE=CONTENT-ID' in formats),
            'alarmType': 2 if has_any else 0, 'alarm_date': stamp(alarm_time(item)),
            'snooze': int(alarm.get('DURATION') or length_of(snooze)),
            'repeatCount': int(repeats), 'displayText': alarm.get('DESCRIPTION') or text}


def zone(item):
    def offset(text):
        return (int(text[1:3]) * 3600 + int((text[4:] or '0')) * 60) * (-1 if text[0] == '-' else 1)
    parts = (item.get('X-PIMVOBJ-DAYLIGHT') or 'TRUE;+00:00;0;0').split(';') + ['', '']
    dates = [None if part == '0' else
             stamp(datetime.datetime.strptime(part, '%Y%m%dT%H%M%SZ')) for part in parts[2:4]]
    return {'tzOffset': offset(item.get('X-PIMVOBJ-TZ') or '+00:00'),
            'daylightOffset': offset(parts[1]), 'daylightStart': dates[0], 'daylightEnd': dates[1],
            'standardName': parts[4], 'daylightName': parts[5]}


def end_time(item, record):
    end = item.time('DTEND', 'X-PIMVOBJ-DTEND')
    if record['allday'] == 1 and 'DTEND' in item.properties:
        end -= datetime.timedelta(days=1)
    return stamp(end)


def status(item):
    word = item.get('STATUS', 'X-PIMVOBJ-STATUS')
    return 0 if word in (None, 'NEEDS-ACTION') else STATUSES.index(word)


def is_day(item):
    return int(len(item.get('DTSTART', 'X-PIMVOBJ-DTSTART') or 'T'.ljust(19)) <= 10)


# What a record's field is by what a peer reads.
FIELDS = {
    'calendar_type': lambda item, record: KINDS[item.kind],
    'allday': lambda item, record: is_day(item),
    'set_holiday': lambda item, record: int(item.get('X-HOLIDAY') == 'YES'),
    'class': lambda item, record: CLASSES.index(item.get('CLASS')),
    'zone': lambda item, record: zone(item),
    'reminder': lambda item, record: reminder(item),
    'start_time': lambda item, record: stamp(item.time('DTSTART', 'X-PIMVOBJ-DTSTART')),
    'end_time': end_time,
    'due': lambda item, record: stamp(item.time('DUE', 'X-PIMVOBJ-DUE')),
    'completed': lambda item, record: stamp(item.time('COMPLETED', 'X-PIMVOBJ-COMPLETED')),
    'created_time': lambda item, record: stamp(item.time('CREATED')),
    'modified_time': lambda item, record: stamp(item.time('LAST-MODIFIED')),
    'xmodified_time': lambda item, record: stamp(item.time('X-MODIFIED')),
    'summary': lambda item, record: item.get('SUMMARY') or '',
    'description': lambda item, record: item.get('DESCRIPTION') or '',
    'location': lambda item, record: item.get('LOCATION', 'X-PIMVOBJ-LOCATION') or '',
    'color': lambda item, record: item.get('COLOR', 'X-COLOR') or '',
    'recurrence': lambda item, record: recurrence(item, record) or record['recurrence'],
    'exceptionRule': lambda item, record: item.get('X-PIMVOBJ-XRULE'),
    'priority': lambda item, record: int(item.get('PRIORITY', 'X-PIMVOBJ-PRIORITY') or 0),
    'status': lambda item, record: status(item),
    'categories': lambda item, record: item.properties.get('CATEGORIES', []),
}


def is_same(found, expected, peer):
    """Readers drop the blanks around a value, and one of them mistakes backslashes."""
    if isinstance(expected, dict):
        return all(is_same(found[key], each, peer) for key, each in expected.items())
    if not isinstance(expected, str) or found is None:
        return found == expected
    if peer == 'python3-icalendar':
        expected, backslash, _ = expected.partition('\\')
        if backslash:
            return found.startswith(expected.rstrip(' \t\n,;'))
    return found.strip(' \t') == expected.strip(' \t')


def main():
    records_path, text_path, report_path, libical_path = sys.argv[1:]
    with open(records_path, encoding='utf-8') as file:
        records = json.load(file)['calendars']
    with open(report_path, encoding='utf-8') as file:
        losses = json.load(file)['losses']
    told = {(loss['record'], loss['field'].split('.')[0].split('[')[0]) for loss in losses}
    faults = 0
    for peer, items in (('libical', libical_items(libical_path)),
                        ('python3-icalendar', python_items(text_path))):
        assert len(items) == len(records), (peer, len(items), len(records))
        assert all('UID' in item.properties and 'DTSTAMP' in item.properties for item in items)
        for number, (record, item) in enumerate(zip(records, items)):
            for field, read in FIELDS.items():
                if (number, field) in told:
                    continue
                expected = record[field]
                if field == 'exceptionRule' and expected is not None:
                    expected = rule_words(expected)
                found = read(item, record)
                if not is_same(found, expected, peer):
                    faults += 1
                    print(f'{text_path}: item {number}: {peer} reads {field} as {found!r}, '
                          f'not {expected!r}')
    return 1 if faults else 0


if __name__ == '__main__':
    sys.exit(main())
