"""A mail server on loopback that writes each mail down as its reader sees it, and can misbehave.

Prints its port and runs until its standard input ends. Each accepted mail is one line of JSON in the file --out.
"""
import argparse, asyncio, email.header, email.policy, email.utils, json, logging, os, ssl, sys, warnings

from aiosmtpd.smtp import SMTP, AuthResult

parser = argparse.ArgumentParser()
parser.add_argument("--out", required=True)
parser.add_argument("--fault", default="")  # silent, slow-data, drop-data, busy
parser.add_argument("--reject", default="")  # a recipient
parser.add_argument("--login", default="")  # user:password
parser.add_argument("--tls", default="")  # starttls, tls
parser.add_argument("--certificate")  # certificate and key in one file
parser.add_argument("--port", type=int, default=0)
options = parser.parse_args()
warnings.simplefilter("ignore")
logging.disable(logging.CRITICAL)


def from_name(raw):
    # The newer reader puts blanks between the encoded words of a name.
    name, _ = email.utils.parseaddr(email.message_from_bytes(raw)["from"])
    return str(email.header.make_header(email.header.decode_header(name)))


def reader_view(envelope, session, secret):
    raw = envelope.original_content
    mail = email.message_from_bytes(raw, policy=email.policy.default)
    return {
        "sender": envelope.mail_from, "recipients": envelope.rcpt_tos,
        "login": (session.auth_data.login.decode() if session.auth_data else ""), "tls": secret,
        "headers": mail.keys(), "subject": str(mail["subject"]),
        "toAddress": mail["to"].addresses[0].addr_spec,
        "fromName": from_name(raw),
        "date": mail["date"].datetime.isoformat() if mail["date"] else "",
        "charset": mail.get_content_charset(), "body": mail.get_content(), "defects": [str(d) for d in mail.defects] +
        [str(d) for value in mail.values() for d in getattr(value, "defects", [])],
        "longestHeader": max(map(len, raw.split(b"\r\n\r\n")[0].split(b"\r\n"))),
        "longestLine": max(map(len, raw.split(b"\r\n"))),
        "loneBreaks": raw.replace(b"\r\n", b"").count(b"\n") + raw.replace(b"\r\n", b"").count(b"\r"),
    }


class Handler:
    async def handle_RCPT(self, server, session, envelope, address, rcpt_options):
        if address == options.reject:
            return "550 5.1.1 no such user here"
        envelope.rcpt_tos.append(address)
        return "250 OK"

    async def handle_DATA(self, server, session, envelope):
        if options.fault == "drop-data":
            server.transport.abort()
            return "250 never seen"
        if options.fault == "slow-data":
            await asyncio.sleep(600)
        if options.fault == "busy":
            return "451 4.3.0 try again later"
        with open(options.out, "a", encoding="utf-8") as out:
            secret = server.transport.get_extra_info("ssl_object") is not None
            out.write(json.dumps(reader_view(envelope, session, secret)) + "\n")
        return "250 taken"


def authenticate(server, session, envelope, mechanism, data):
    given = (data.login + b":" + data.password).decode()
    return AuthResult(success=given == options.login, handled=False, auth_data=data)


def tls_context():
    context = ssl.create_default_context(ssl.Purpose.CLIENT_AUTH)
    context.load_cert_chain(options.certificate)
    return context


def connection():
    if options.fault == "silent":
        return asyncio.Protocol()
    settings = {}
    if options.login:
        settings.update(authenticator=authenticate, auth_required=True, auth_require_tls=False)
    if options.tls == "starttls":
        settings.update(tls_context=tls_context(), require_starttls=True)
    return SMTP(Handler(), hostname="loopback", **settings)


async def serve():
    loop = asyncio.get_running_loop()
    server = await loop.create_server(connection, "127.0.0.1", options.port,
                                      ssl=tls_context() if options.tls == "tls" else None)
    print(server.sockets[0].getsockname()[1], flush=True)
    await loop.run_in_executor(None, sys.stdin.read)
    os._exit(0)  # connections that still hang are of no interest


asyncio.run(serve())
