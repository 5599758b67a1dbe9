"""A mail server on loopback that writes each mail down as its reader sees it, and can misbehave.

Prints its port and runs until its standard input ends. Each accepted mail is one line of JSON in the file --out.
"""
import argparse, asyncio, email.header, email.policy, email.utils, json, logging, os, ssl, subprocess, sys, warnings

from aiosmtpd.smtp import SMTP, AuthResult

parser = argparse.ArgumentParser()
parser.add_argument("--out", required=True)
parser.add_argument("--port", type=int, default=0)
parser.add_argument("--fault", help="silent, slow-data, drop-data or busy")
parser.add_argument("--wait", type=float, default=0, help="seconds before a mail is accepted")
parser.add_argument("--reject", help="a recipient that is refused")
parser.add_argument("--login", help="user:password that is demanded")
parser.add_argument("--tls", help="starttls or tls; a certificate is made beside --out")
parser.add_argument("--name", default="localhost", help="whom the certificate is for")
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
    bare = raw.replace(b"\r\n", b"")
    return {
        "recipients": envelope.rcpt_tos, "headers": mail.keys(), "tls": secret,
        "login": session.auth_data.login.decode() if session.auth_data else "",
        "subject": str(mail["subject"]), "fromName": from_name(raw), "toAddress": mail["to"].addresses[0].addr_spec,
        "date": mail["date"].datetime.isoformat(), "charset": mail.get_content_charset(), "body": mail.get_content(),
        "defects": [str(d) for part in [mail, *mail.values()] for d in getattr(part, "defects", [])],
        "longestHeader": max(map(len, raw.split(b"\r\n\r\n")[0].split(b"\r\n"))),
        "longestLine": max(map(len, raw.split(b"\r\n"))), "loneBreaks": bare.count(b"\n") + bare.count(b"\r"),
    }


class Handler:
    async def handle_RCPT(self, server, session, envelope, address, rcpt_options):
        if address == options.reject:
            return "550 5.1.1 no such user here"
        envelope.rcpt_tos.append(address)
        return "250 OK"

    async def handle_DATA(self, server, session, envelope):
        await asyncio.sleep(options.wait)
        if options.fault == "drop-data":
            server.transport.abort()
        elif options.fault == "slow-data":
            await asyncio.sleep(600)
        elif options.fault == "busy":
            return "451 4.3.0 try again later"
        else:
            with open(options.out, "a", encoding="utf-8") as out:
                secret = server.transport.get_extra_info("ssl_object") is not None
                out.write(json.dumps(reader_view(envelope, session, secret)) + "\n")
        return "250 taken"


def authenticate(server, session, envelope, mechanism, data):
    given = (data.login + b":" + data.password).decode()
    return AuthResult(success=given == options.login, handled=False, auth_data=data)


def tls_context():
    certificate, key = options.out + ".pem", options.out + ".key"
    subprocess.run(["openssl", "req", "-x509", "-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:prime256v1", "-nodes",
                    "-batch", "-days", "2", "-subj", "/CN=" + options.name, "-addext",
                    "subjectAltName=DNS:" + options.name, "-keyout", key, "-out", certificate],
                   check=True, capture_output=True)
    context = ssl.create_default_context(ssl.Purpose.CLIENT_AUTH)
    context.load_cert_chain(certificate, key)
    return context


async def serve():
    settings = {"hostname": "loopback"}
    if options.login:
        settings.update(authenticator=authenticate, auth_required=True, auth_require_tls=False)
    context = tls_context() if options.tls else None
    if options.tls == "starttls":
        settings.update(tls_context=context, require_starttls=True)
    loop = asyncio.get_running_loop()
    server = await loop.create_server(
        asyncio.Protocol if options.fault == "silent" else lambda: SMTP(Handler(), **settings), "127.0.0.1",
        options.port, ssl=context if options.tls == "tls" else None)
    print(server.sockets[0].getsockname()[1], flush=True)
    await loop.run_in_executor(None, sys.stdin.read)
    os._exit(0)  # connections that still hang are of no interest


asyncio.run(serve())
